// The compiled form of a stylesheet element: CInstruction is the root of every instruction
// class, CContent an ordered sequence of them (the body of a template or of an instruction).
// An instruction needs no DOM node at run time: it keeps its element's name, location and
// namespace bindings.
#pragma once
#include "core/Array.h"
#include "core/DomString.h"
#include "core/RefObject.h"
#include "xpath/Context.h"
#include "xslt/XsltException.h"
#include "xslt/private/NamespaceContext.h"

namespace XsltPrivate {

class CCompileContext;
class CExecutionContext;

class CInstruction : public CRefObject {
public:
    virtual void Execute(CExecutionContext& context) = 0;

    // Takes name, location and namespace bindings of the element being compiled.
    void Initialise(const CCompileContext& compile);

    const DomString& GetName() const { return m_sName; }
    const Xslt::SLocation& GetLocation() const { return m_location; }
    CNamespaceContext* GetNamespaces() const { return m_pNamespaces; }
    const DomString& GetBaseUri() const { return m_sBaseUri; }

    // The XPath context last built for this instruction; the execution context reuses it while
    // the node list and the variable frame are the same.
    TRefPtr<Xpath::CContext> m_pXpathContext;

private:
    DomString m_sName;
    Xslt::SLocation m_location;
    TRefPtr<CNamespaceContext> m_pNamespaces;
    DomString m_sBaseUri;
};

class CContent {
public:
    void Add(CInstruction* instruction) {
        if (instruction) m_aInstructions.Add(instruction);
    }
    bool IsEmpty() const { return m_aInstructions.GetSize() == 0; }
    int GetSize() const { return m_aInstructions.GetSize(); }
    CInstruction* Get(int index) const { return m_aInstructions[index]; }
    // Runs each instruction in a child context of its own, with no new variable frame.
    void Execute(CExecutionContext& context) const;

private:
    TArray<TRefPtr<CInstruction>> m_aInstructions;
};

}  // namespace XsltPrivate
