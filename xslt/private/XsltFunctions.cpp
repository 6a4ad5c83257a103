// The XSLT function library.
#include "xslt/private/XsltFunctions.h"

#include "dom/Document.h"
#include "xpath/Converter.h"
#include "xpath/NodeSet.h"
#include "xslt/XsltException.h"
#include "xslt/private/ExecutionContext.h"
#include "xslt/private/Instruction.h"
#include "xslt/private/QName.h"
#include "xslt/private/Runtime.h"

namespace XsltPrivate {

namespace {

using Xslt::CXsltException;
using FArguments = TArray<TRefPtr<Xpath::CValue>>;

const DomChar kVendor[] = u"Kestrel Foundry SA";
// The vendor's web address, a setting of the build.
const DomChar kVendorUrl[] = u"http://www.kestrel-foundry.example/";

const DomChar* const s_apXsltInstructions[] = {
    u"apply-imports", u"apply-templates", u"call-template", u"choose", u"copy", u"copy-of", u"fallback",
    u"for-each", u"if", u"message", u"number", u"text", u"value-of", u"variable", u"attribute", u"comment",
    u"element", u"processing-instruction"};

class CXsltFunction : public Xpath::IFunction {
public:
    CXsltFunction(CRuntime* runtime, const DomChar* name, int minimum, int maximum)
        : m_pRuntime(runtime), m_pName(name), m_nMinimum(minimum), m_nMaximum(maximum) {}

    void Call(TRefPtr<Xpath::CValue>& result, Xpath::CContext* context, const FArguments& arguments) override {
        CExecutionContext& active = *m_pRuntime->GetActiveContext();
        if (arguments.GetSize() < m_nMinimum || arguments.GetSize() > m_nMaximum) {
            active.RaiseFatal(CXsltException::InvalidNumberOfArguments, m_pName);
        }
        Run(result, active, context, arguments);
    }

protected:
    virtual void Run(TRefPtr<Xpath::CValue>& result, CExecutionContext& active, Xpath::CContext* context,
                     const FArguments& arguments) = 0;

    // The argument as a node-set; code 48 with its position otherwise.
    Xpath::CNodeSet* NodeSetArgument(CExecutionContext& active, const FArguments& arguments, int index) const {
        Xpath::CNodeSet* nodes = arguments[index]->GetNodeSet();
        if (arguments[index]->GetType() != Xpath::TypeNodeSet || !nodes) {
            active.RaiseFatal(CXsltException::InvalidArgumentType, m_pName, index == 0 ? u"1" : u"2");
        }
        return nodes;
    }

    static DomString StringArgument(Xpath::CContext* context, const FArguments& arguments, int index) {
        return Xpath::CConverter(context).ToString(arguments[index]);
    }

    // Splits a QName with the calling instruction's bindings; code 9 for an unknown prefix.
    static void ResolveName(CExecutionContext& active, const DomString& text, SQName& name) {
        DomStringView prefix;
        DomStringView localName;
        SplitQName(text, prefix, localName);
        name.sLocalName.assign(localName);
        name.sUri.clear();
        if (prefix.empty()) return;
        CInstruction* instruction = active.GetInstruction();
        if (!instruction || !instruction->GetNamespaces()->Lookup(prefix, name.sUri)) {
            active.RaiseFatal(CXsltException::UndefinedPrefix, DomString(prefix));
        }
    }

    static void ReturnString(TRefPtr<Xpath::CValue>& result, DomString text) { result = new Xpath::CStringValue(std::move(text)); }
    static void ReturnBoolean(TRefPtr<Xpath::CValue>& result, bool value) { result = new Xpath::CBooleanValue(value); }

    CRuntime* m_pRuntime;
    const DomChar* m_pName;

private:
    int m_nMinimum;
    int m_nMaximum;
};

class CCurrentFunction : public CXsltFunction {
public:
    explicit CCurrentFunction(CRuntime* runtime) : CXsltFunction(runtime, u"current", 0, 0) {}
    void Run(TRefPtr<Xpath::CValue>& result, CExecutionContext& active, Xpath::CContext*, const FArguments&) override {
        result = new Xpath::CNodeSetValue(new Xpath::CSingleNodeSet(active.GetCurrentNode()));
    }
};

class CGenerateIdFunction : public CXsltFunction {
public:
    explicit CGenerateIdFunction(CRuntime* runtime) : CXsltFunction(runtime, u"generate-id", 0, 1) {}
    void Run(TRefPtr<Xpath::CValue>& result, CExecutionContext& active, Xpath::CContext*,
             const FArguments& arguments) override {
        Dom::CNode* node = arguments.GetSize() ? NodeSetArgument(active, arguments, 0)->GetFirst() : active.GetCurrentNode();
        if (!node) return ReturnString(result, DomString());
        // "X-" and the document number and node order as eight upper-case hex digits each.
        DomString id(u"X-00000000-00000000");
        WriteHex(node->GetDocumentNumber(), &id[2]);
        WriteHex(node->GetOrder(), &id[11]);
        ReturnString(result, std::move(id));
    }

private:
    static void WriteHex(uint32_t value, DomChar* digits) {
        for (int i = 7; i >= 0; --i, value >>= 4) digits[i] = u"0123456789ABCDEF"[value & 0xF];
    }
};

class CSystemPropertyFunction : public CXsltFunction {
public:
    explicit CSystemPropertyFunction(CRuntime* runtime) : CXsltFunction(runtime, u"system-property", 1, 1) {}
    void Run(TRefPtr<Xpath::CValue>& result, CExecutionContext& active, Xpath::CContext* context,
             const FArguments& arguments) override {
        SQName name;
        ResolveName(active, StringArgument(context, arguments, 0), name);
        if (name.sUri != kXsltNamespace) return ReturnString(result, DomString());
        if (name.sLocalName == u"version") {
            result = new Xpath::CNumberValue(Xpath::CNumber(1.0));
        } else if (name.sLocalName == u"vendor") {
            ReturnString(result, kVendor);
        } else if (name.sLocalName == u"vendor-url") {
            ReturnString(result, kVendorUrl);
        } else {
            ReturnString(result, DomString());
        }
    }
};

class CElementAvailableFunction : public CXsltFunction {
public:
    explicit CElementAvailableFunction(CRuntime* runtime) : CXsltFunction(runtime, u"element-available", 1, 1) {}
    void Run(TRefPtr<Xpath::CValue>& result, CExecutionContext& active, Xpath::CContext* context,
             const FArguments& arguments) override {
        SQName name;
        ResolveName(active, StringArgument(context, arguments, 0), name);
        bool available = false;
        if (name.sUri == kXsltNamespace) {
            for (const DomChar* instruction : s_apXsltInstructions) available = available || name.sLocalName == instruction;
        }
        ReturnBoolean(result, available);
    }
};

class CFunctionAvailableFunction : public CXsltFunction {
public:
    explicit CFunctionAvailableFunction(CRuntime* runtime) : CXsltFunction(runtime, u"function-available", 1, 1) {}
    void Run(TRefPtr<Xpath::CValue>& result, CExecutionContext& active, Xpath::CContext* context,
             const FArguments& arguments) override {
        SQName name;
        ResolveName(active, StringArgument(context, arguments, 0), name);
        ReturnBoolean(result, context->GetFunctions()->IsFunctionAvailable(name.sUri, name.sLocalName));
    }
};

class CUnparsedEntityUriFunction : public CXsltFunction {
public:
    explicit CUnparsedEntityUriFunction(CRuntime* runtime) : CXsltFunction(runtime, u"unparsed-entity-uri", 1, 1) {}
    void Run(TRefPtr<Xpath::CValue>& result, CExecutionContext& active, Xpath::CContext* context,
             const FArguments& arguments) override {
        DomString systemId;
        DomString publicId;
        Dom::CNode* node = active.GetCurrentNode();
        Dom::CDocument* document = node ? node->GetOwnerDocument() : nullptr;
        if (!document || !document->GetUnparsedEntity(StringArgument(context, arguments, 0), systemId, publicId)) {
            systemId.clear();
        }
        ReturnString(result, systemId);
    }
};

}  // namespace

void AddXsltFunctions(Xpath::CCoreFunctionLibrary* library, CRuntime* runtime) {
    library->AddFunction(u"current", new CCurrentFunction(runtime));
    library->AddFunction(u"unparsed-entity-uri", new CUnparsedEntityUriFunction(runtime));
    library->AddFunction(u"generate-id", new CGenerateIdFunction(runtime));
    library->AddFunction(u"system-property", new CSystemPropertyFunction(runtime));
    library->AddFunction(u"element-available", new CElementAvailableFunction(runtime));
    library->AddFunction(u"function-available", new CFunctionAvailableFunction(runtime));
}

}  // namespace XsltPrivate
