// The parts of the XSLT function library that reach beyond the current node: document() with
// the run's document table, key() on the run's key table, and format-number(). They join the
// run's core function table beside the other XSLT functions.
#pragma once
#include <unordered_map>

#include "core/Hash.h"
#include "dom/Node.h"
#include "dom/StripSpaceRules.h"
#include "xpath/CoreFunctionLibrary.h"
#include "xpath/NodeSet.h"
#include "xpath/Value.h"
#include "xslt/Environment.h"
#include "xslt/private/QName.h"

namespace XsltPrivate {

class CExecutionContext;
class CLocator;
class CRuntime;

// A node-set merged from sets in document order: document order, no node twice.
class CMergedNodeSet : public Xpath::CUnionNodeSet {
public:
    using CUnionNodeSet::CUnionNodeSet;
};

// The documents a run has loaded, by absolute URI: one URI gives one document for the whole
// run, which keeps it alive.
class CDocumentTable : public CRefObject {
public:
    CDocumentTable(Xslt::CEnvironment* environment, CLocator* locator);
    ~CDocumentTable() override;

    // The space stripping that documents get when they are built.
    void SetSpaceRules(Dom::CStripSpaceRules* rules) { m_pSpaceRules = rules; }
    // Enters a document read by other means, such as the source document of the run.
    void Add(const DomString& uri, Dom::CNode* document);
    // The document at `uri`, built at the first request; a failure of the source passes on.
    Dom::CNode* Load(const DomString& uri);

private:
    struct SHash {
        size_t operator()(const DomString& text) const { return Core::HashText(text); }
    };

    TRefPtr<Xslt::CEnvironment> m_pEnvironment;
    TRefPtr<CLocator> m_pLocator;
    TRefPtr<Dom::CStripSpaceRules> m_pSpaceRules;
    std::unordered_map<DomString, Dom::TNodeRef, SHash> m_documents;
};

// The shared checks of an XSLT function: the argument count (code 47) and types (code 48),
// and QName arguments resolved with the calling instruction's bindings (code 9). Errors carry
// the location of the instruction whose expression is running.
class CLibraryFunction : public Xpath::IFunction {
public:
    using FArguments = TArray<TRefPtr<Xpath::CValue>>;

    CLibraryFunction(CRuntime* runtime, const DomChar* name, int minimum, int maximum)
        : m_pRuntime(runtime), m_pName(name), m_nMinimum(minimum), m_nMaximum(maximum) {}
    void Call(TRefPtr<Xpath::CValue>& result, Xpath::CContext* context, const FArguments& arguments) override;

protected:
    virtual void Run(TRefPtr<Xpath::CValue>& result, CExecutionContext& active, Xpath::CContext* context,
                     const FArguments& arguments) = 0;
    // The argument as a node-set, else code 48 with its position.
    Xpath::CNodeSet* NodeSetArgument(CExecutionContext& active, const FArguments& arguments, int index) const;
    static DomString StringArgument(Xpath::CContext* context, const FArguments& arguments, int index);
    static void ResolveQName(CExecutionContext& active, DomStringView text, SQName& name);

    CRuntime* m_pRuntime;
    const DomChar* m_pName;

private:
    int m_nMinimum;
    int m_nMaximum;
};

// Enters document(), key() and format-number() into the run's function table.
void AddDocumentFunctions(Xpath::CCoreFunctionLibrary* library, CRuntime* runtime);

}  // namespace XsltPrivate
