// The XSLT function library.
#include "xslt/private/XsltFunctions.h"

#include "dom/Document.h"
#include "xpath/NodeSet.h"
#include "xslt/XsltException.h"
#include "xslt/private/ExecutionContext.h"
#include "xslt/private/FunctionLibrary.h"
#include "xslt/private/QName.h"
#include "xslt/private/Runtime.h"

namespace XsltPrivate {

namespace {

using Xslt::CXsltException;
using FArguments = CLibraryFunction::FArguments;

const DomChar kVendor[] = u"Kestrel Foundry SA";
// The vendor's web address, a setting of the build.
const DomChar kVendorUrl[] = u"http://www.kestrel-foundry.example/";

const DomChar* const s_apXsltInstructions[] = {
    u"apply-imports", u"apply-templates", u"call-template", u"choose", u"copy", u"copy-of", u"fallback",
    u"for-each", u"if", u"message", u"number", u"text", u"value-of", u"variable", u"attribute", u"comment",
    u"element", u"processing-instruction"};

void ReturnString(TRefPtr<Xpath::CValue>& result, DomString text) { result = new Xpath::CStringValue(std::move(text)); }
void ReturnBoolean(TRefPtr<Xpath::CValue>& result, bool value) { result = new Xpath::CBooleanValue(value); }

class CCurrentFunction : public CLibraryFunction {
public:
    explicit CCurrentFunction(CRuntime* runtime) : CLibraryFunction(runtime, u"current", 0, 0) {}
    void Run(TRefPtr<Xpath::CValue>& result, CExecutionContext& active, Xpath::CContext*, const FArguments&) override {
        result = new Xpath::CNodeSetValue(new Xpath::CSingleNodeSet(active.GetCurrentNode()));
    }
};

class CGenerateIdFunction : public CLibraryFunction {
public:
    explicit CGenerateIdFunction(CRuntime* runtime) : CLibraryFunction(runtime, u"generate-id", 0, 1) {}
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

class CSystemPropertyFunction : public CLibraryFunction {
public:
    explicit CSystemPropertyFunction(CRuntime* runtime) : CLibraryFunction(runtime, u"system-property", 1, 1) {}
    void Run(TRefPtr<Xpath::CValue>& result, CExecutionContext& active, Xpath::CContext* context,
             const FArguments& arguments) override {
        SQName name;
        ResolveQName(active, StringArgument(context, arguments, 0), name);
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

class CElementAvailableFunction : public CLibraryFunction {
public:
    explicit CElementAvailableFunction(CRuntime* runtime) : CLibraryFunction(runtime, u"element-available", 1, 1) {}
    void Run(TRefPtr<Xpath::CValue>& result, CExecutionContext& active, Xpath::CContext* context,
             const FArguments& arguments) override {
        SQName name;
        ResolveQName(active, StringArgument(context, arguments, 0), name);
        bool available = false;
        if (name.sUri == kXsltNamespace) {
            for (const DomChar* instruction : s_apXsltInstructions) available = available || name.sLocalName == instruction;
        }
        ReturnBoolean(result, available);
    }
};

class CFunctionAvailableFunction : public CLibraryFunction {
public:
    explicit CFunctionAvailableFunction(CRuntime* runtime) : CLibraryFunction(runtime, u"function-available", 1, 1) {}
    void Run(TRefPtr<Xpath::CValue>& result, CExecutionContext& active, Xpath::CContext* context,
             const FArguments& arguments) override {
        SQName name;
        ResolveQName(active, StringArgument(context, arguments, 0), name);
        ReturnBoolean(result, context->GetFunctions()->IsFunctionAvailable(name.sUri, name.sLocalName));
    }
};

class CUnparsedEntityUriFunction : public CLibraryFunction {
public:
    explicit CUnparsedEntityUriFunction(CRuntime* runtime) : CLibraryFunction(runtime, u"unparsed-entity-uri", 1, 1) {}
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
