// The core functions. Each checks its argument count first (message 16), converts its
// arguments under the calling context, and uses the context node where an optional argument
// is absent.
#include "xpath/private/CoreFunctions.h"

#include "dom/Document.h"
#include "xpath/CoreFunctionLibrary.h"
#include "xpath/Converter.h"
#include "xpath/NodeSet.h"
#include "xpath/PathExpr.h"
#include "xpath/Scanner.h"
#include "xpath/SortedNodeList.h"
#include "xpath/Value.h"
#include "xpath/XpathException.h"

namespace XpathPrivate {

using namespace Xpath;

namespace {

using CArguments = TArray<TRefPtr<CValue>>;

class CCoreFunction : public IFunction {
public:
    // `maximum` -1 admits any number from `minimum` up.
    CCoreFunction(const DomChar* name, int minimum, int maximum)
        : m_pName(name), m_nMinimum(minimum), m_nMaximum(maximum) {}

    void Call(TRefPtr<CValue>& result, CContext* context, const CArguments& arguments) override {
        int count = arguments.GetSize();
        if (count < m_nMinimum || (m_nMaximum >= 0 && count > m_nMaximum))
            throw new CXpathException(CXpathException::InvalidArgumentCount, m_pName);
        Evaluate(result, context, arguments);
    }
    const DomChar* GetName() const { return m_pName; }

protected:
    virtual void Evaluate(TRefPtr<CValue>& result, CContext* context, const CArguments& arguments) = 0;

    // Argument `index` as a string; the context node's string-value when absent.
    static DomString String(CContext* context, const CArguments& arguments, int index) {
        if (index < arguments.GetSize()) return CConverter(context).ToString(arguments[index]);
        Dom::CNode* node = context->GetNode();
        return node ? node->GetStringValue() : DomString();
    }
    // Argument `index` as text without a copy where it is a string already; other values are
    // converted into `buffer`, which the view then shows.
    static DomStringView Text(CContext* context, const CArguments& arguments, int index, DomString& buffer) {
        if (index < arguments.GetSize() && arguments[index]->GetType() == TypeString)
            return static_cast<const CStringValue*>(arguments[index].Get())->GetText();
        buffer = String(context, arguments, index);
        return buffer;
    }
    static CNumber Number(CContext* context, const CArguments& arguments, int index) {
        if (index < arguments.GetSize()) return CConverter(context).ToNumber(arguments[index]);
        return CConverter::StringToNumber(String(context, arguments, index));
    }
    static bool Boolean(CContext* context, const CArguments& arguments, int index) {
        return CConverter(context).ToBoolean(arguments[index]);
    }
    // The first argument, which must be a node-set (message 17).
    CNodeSet* NodeSet(const CArguments& arguments) const {
        CValue* value = arguments[0];
        CNodeSet* nodeSet = value->GetType() == TypeNodeSet ? value->GetNodeSet() : nullptr;
        if (!nodeSet) throw new CXpathException(CXpathException::InvalidArgumentType, m_pName, u"1");
        return nodeSet;
    }
    // The first node of the argument, or the context node without one.
    Dom::CNode* NodeOrContext(CContext* context, const CArguments& arguments) const {
        return arguments.IsEmpty() ? context->GetNode() : NodeSet(arguments)->GetFirst();
    }

private:
    const DomChar* m_pName;
    int m_nMinimum;
    int m_nMaximum;
};

// Declares a function class with its name and argument range; the body follows as Evaluate.
#define KST_CORE_FUNCTION(Class, Name, Minimum, Maximum)                                                  \
    class Class : public CCoreFunction {                                                                 \
    public:                                                                                              \
        Class() : CCoreFunction(Name, Minimum, Maximum) {}                                               \
                                                                                                         \
    protected:                                                                                           \
        void Evaluate(TRefPtr<CValue>& result, CContext* context, const CArguments& arguments) override; \
    };                                                                                                   \
    void Class::Evaluate([[maybe_unused]] TRefPtr<CValue>& result, [[maybe_unused]] CContext* context,   \
                         [[maybe_unused]] const CArguments& arguments)

DomChar FoldCase(DomChar c) { return c >= u'A' && c <= u'Z' ? DomChar(c + (u'a' - u'A')) : c; }

void Fold(DomString& text) {
    for (DomChar& c : text) c = FoldCase(c);
}

// Start and end (one past) of a substring by 1-based rounded positions, clamped to the text;
// false when either is NaN.
bool SubstringBounds(CNumber start, CNumber end, size_t length, size_t& first, size_t& last) {
    if (start.IsNaN() || end.IsNaN()) return false;
    CNumber low(1), high(static_cast<double>(length) + 1);
    if (start < low) start = low;
    if (start > high) start = high;
    if (end < low) end = low;
    if (end > high) end = high;
    first = static_cast<size_t>(start.GetValue()) - 1;
    last = static_cast<size_t>(end.GetValue()) - 1;
    return true;
}

void LookUpId(CSortedNodeList* list, INodeOrder* order, const Dom::CNode* document, DomStringView id) {
    if (Dom::CNode* element = order->GetElementById(document, id)) list->Insert(element);
}

KST_CORE_FUNCTION(CLastFunction, u"last", 0, 0) { result = new CNumberValue(context->GetSize()); }

KST_CORE_FUNCTION(CPositionFunction, u"position", 0, 0) { result = new CNumberValue(context->GetPosition()); }

KST_CORE_FUNCTION(CCountFunction, u"count", 1, 1) { result = new CNumberValue(NodeSet(arguments)->GetLength()); }

// A node-set argument gives one whole ID per node, looked up in that node's document; any
// other argument is split at blanks and looked up in the context node's document.
KST_CORE_FUNCTION(CIdFunction, u"id", 1, 1) {
    INodeOrder* order = context->GetNodeOrder();
    TRefPtr<CSortedNodeList> list;
    context->GetExtensionTypes()->GetListFactory()->Create(list, order);
    CValue* argument = arguments[0];
    if (argument->GetType() == TypeNodeSet) {
        TRefPtr<CNodeIterator> iterator;
        NodeSet(arguments)->CreateIterator(iterator);
        for (; iterator->Current(); iterator->Next()) {
            Dom::CNode* node = iterator->Current();
            LookUpId(list, order, node->GetOwnerDocument(), node->GetStringValue());
        }
    } else if (Dom::CNode* node = context->GetNode()) {
        DomString text = CConverter(context).ToString(argument);
        size_t i = 0, n = text.size();
        while (i < n) {
            while (i < n && CScanner::IsWhitespace(text[i])) ++i;
            size_t start = i;
            while (i < n && !CScanner::IsWhitespace(text[i])) ++i;
            if (i > start) LookUpId(list, order, node->GetOwnerDocument(), DomStringView(text).substr(start, i - start));
        }
    }
    result = new CNodeSetValue(new CNodeListNodeSet(list));
}

// A namespace node is named by its prefix; kinds without a name give "".
KST_CORE_FUNCTION(CLocalNameFunction, u"local-name", 0, 1) {
    Dom::CNode* node = NodeOrContext(context, arguments);
    DomString name;
    if (node && node->GetNodeType() == Dom::NAMESPACE_NODE)
        name = static_cast<Dom::CNamespaceNode*>(node)->m_sPrefix;
    else if (node)
        name = node->GetLocalName();
    result = new CStringValue(std::move(name));
}

KST_CORE_FUNCTION(CNamespaceUriFunction, u"namespace-uri", 0, 1) {
    Dom::CNode* node = NodeOrContext(context, arguments);
    result = new CStringValue(node ? node->GetNamespaceUri() : DomString());
}

// The node name as the DOM gives it: the qualified name as written, "#text" for text.
KST_CORE_FUNCTION(CNameFunction, u"name", 0, 1) {
    Dom::CNode* node = NodeOrContext(context, arguments);
    result = new CStringValue(node ? node->GetNodeName() : DomString());
}

KST_CORE_FUNCTION(CStringFunction, u"string", 0, 1) { result = new CStringValue(String(context, arguments, 0)); }

KST_CORE_FUNCTION(CConcatFunction, u"concat", 2, -1) {
    DomString text, buffer;
    for (int i = 0; i < arguments.GetSize(); ++i) text += Text(context, arguments, i, buffer);
    result = new CStringValue(std::move(text));
}

KST_CORE_FUNCTION(CStartsWithFunction, u"starts-with", 2, 2) {
    DomString textBuffer, prefixBuffer;
    DomStringView text = Text(context, arguments, 0, textBuffer), prefix = Text(context, arguments, 1, prefixBuffer);
    result = new CBooleanValue(text.starts_with(prefix));
}

KST_CORE_FUNCTION(CContainsFunction, u"contains", 2, 2) {
    DomString textBuffer, partBuffer;
    DomStringView text = Text(context, arguments, 0, textBuffer), part = Text(context, arguments, 1, partBuffer);
    result = new CBooleanValue(text.find(part) != DomStringView::npos);
}

KST_CORE_FUNCTION(CSubstringBeforeFunction, u"substring-before", 2, 2) {
    DomString textBuffer, partBuffer;
    DomStringView text = Text(context, arguments, 0, textBuffer), part = Text(context, arguments, 1, partBuffer);
    size_t at = text.find(part);
    result = new CStringValue(at == DomStringView::npos ? DomString() : DomString(text.substr(0, at)));
}

KST_CORE_FUNCTION(CSubstringAfterFunction, u"substring-after", 2, 2) {
    DomString textBuffer, partBuffer;
    DomStringView text = Text(context, arguments, 0, textBuffer), part = Text(context, arguments, 1, partBuffer);
    size_t at = text.find(part);
    result = new CStringValue(at == DomStringView::npos ? DomString() : DomString(text.substr(at + part.size())));
}

// Start and length are rounded separately; NaN anywhere gives "".
KST_CORE_FUNCTION(CSubstringFunction, u"substring", 2, 3) {
    DomString buffer;
    DomStringView text = Text(context, arguments, 0, buffer);
    CNumber start = Number(context, arguments, 1).Round();
    CNumber end = arguments.GetSize() == 3 ? start + Number(context, arguments, 2).Round()
                                           : CNumber(static_cast<double>(text.size()) + 1);
    size_t first, last;
    if (!SubstringBounds(start, end, text.size(), first, last) || last <= first)
        result = new CStringValue(DomString());
    else
        result = new CStringValue(DomString(text.substr(first, last - first)));
}

// The length of a node's string-value without building it: below an element or the document
// the texts, comments and processing instructions are measured in order, as the string-value
// gathers them.
size_t StringValueLength(const Dom::CNode* root) {
    int type = root->GetNodeType();
    if (type != Dom::ELEMENT_NODE && type != Dom::DOCUMENT_NODE) return root->GetStringValue().size();
    size_t length = 0;
    const Dom::CNode* node = root->GetFirstChild();
    while (node) {
        if (const Dom::CNode* child = node->GetFirstChild()) {
            node = child;
            continue;
        }
        if (node->GetNodeType() != Dom::ELEMENT_NODE) length += node->GetTextView().size();
        while (node != root) {
            if (const Dom::CNode* next = node->GetNextSibling()) {
                node = next;
                break;
            }
            node = node->GetParentNode();
        }
        if (node == root) break;
    }
    return length;
}

KST_CORE_FUNCTION(CStringLengthFunction, u"string-length", 0, 1) {
    if (arguments.IsEmpty() || arguments[0]->GetType() == TypeNodeSet) {
        Dom::CNode* node = arguments.IsEmpty() ? context->GetNode() : RequireNodeSet(arguments[0])->GetFirst();
        result = new CNumberValue(node ? static_cast<double>(StringValueLength(node)) : 0.0);
        return;
    }
    DomString buffer;
    result = new CNumberValue(static_cast<double>(Text(context, arguments, 0, buffer).size()));
}

KST_CORE_FUNCTION(CNormalizeSpaceFunction, u"normalize-space", 0, 1) {
    DomString buffer, normal;
    DomStringView text = Text(context, arguments, 0, buffer);
    normal.reserve(text.size());
    for (size_t i = 0, n = text.size(); i < n;) {
        while (i < n && CScanner::IsWhitespace(text[i])) ++i;
        size_t start = i;
        while (i < n && !CScanner::IsWhitespace(text[i])) ++i;
        if (i == start) break;
        if (!normal.empty()) normal += u' ';
        normal.append(text.substr(start, i - start));
    }
    result = new CStringValue(std::move(normal));
}

// The first place of a unit in `from` decides; a place beyond `to` removes the unit.
KST_CORE_FUNCTION(CTranslateFunction, u"translate", 3, 3) {
    DomString textBuffer, fromBuffer, toBuffer, translated;
    DomStringView text = Text(context, arguments, 0, textBuffer), from = Text(context, arguments, 1, fromBuffer),
                  to = Text(context, arguments, 2, toBuffer);
    translated.reserve(text.size());
    for (DomChar c : text) {
        size_t at = from.find(c);
        if (at == DomStringView::npos)
            translated += c;
        else if (at < to.size())
            translated += to[at];
    }
    result = new CStringValue(std::move(translated));
}

KST_CORE_FUNCTION(CBooleanFunction, u"boolean", 1, 1) { result = new CBooleanValue(Boolean(context, arguments, 0)); }

KST_CORE_FUNCTION(CNotFunction, u"not", 1, 1) { result = new CBooleanValue(!Boolean(context, arguments, 0)); }

KST_CORE_FUNCTION(CTrueFunction, u"true", 0, 0) { result = new CBooleanValue(true); }

KST_CORE_FUNCTION(CFalseFunction, u"false", 0, 0) { result = new CBooleanValue(false); }

// The nearest "xml:lang" attribute on the context node or an ancestor decides, without regard
// to case; a sub-language after "-" matches its language.
KST_CORE_FUNCTION(CLangFunction, u"lang", 1, 1) {
    DomString language = String(context, arguments, 0);
    const Dom::CAttr* attribute = nullptr;
    for (Dom::CNode* node = context->GetNode(); node && !attribute; node = node->GetParentNode())
        if (node->GetNodeType() == Dom::ELEMENT_NODE)
            attribute = static_cast<Dom::CElement*>(node)->GetAttributeNode(u"xml:lang");
    bool matches = false;
    if (attribute) {
        DomString value(attribute->GetValueView());
        Fold(value);
        Fold(language);
        matches = value == language || (value.size() > language.size() && value.compare(0, language.size(), language) == 0 &&
                                        value[language.size()] == u'-');
    }
    result = new CBooleanValue(matches);
}

KST_CORE_FUNCTION(CNumberFunction, u"number", 0, 1) { result = new CNumberValue(Number(context, arguments, 0)); }

KST_CORE_FUNCTION(CSumFunction, u"sum", 1, 1) {
    TRefPtr<CNodeIterator> iterator;
    NodeSet(arguments)->CreateIterator(iterator);
    CNumber sum(0);
    DomString text;
    for (; iterator->Current(); iterator->Next()) {
        text.clear();
        iterator->Current()->AppendStringValue(text);
        sum = sum + CConverter::StringToNumber(text);
    }
    result = new CNumberValue(sum);
}

KST_CORE_FUNCTION(CFloorFunction, u"floor", 1, 1) { result = new CNumberValue(Number(context, arguments, 0).Floor()); }

KST_CORE_FUNCTION(CCeilingFunction, u"ceiling", 1, 1) {
    result = new CNumberValue(Number(context, arguments, 0).Ceiling());
}

KST_CORE_FUNCTION(CRoundFunction, u"round", 1, 1) { result = new CNumberValue(Number(context, arguments, 0).Round()); }

#undef KST_CORE_FUNCTION

template <class TFunction>
void Add(CCoreFunctionLibrary& library) {
    TFunction* function = new TFunction();
    library.AddFunction(function->GetName(), function);
}

}  // namespace

void AddCoreFunctions(CCoreFunctionLibrary& library) {
    Add<CLastFunction>(library);
    Add<CPositionFunction>(library);
    Add<CCountFunction>(library);
    Add<CIdFunction>(library);
    Add<CLocalNameFunction>(library);
    Add<CNamespaceUriFunction>(library);
    Add<CNameFunction>(library);
    Add<CStringFunction>(library);
    Add<CConcatFunction>(library);
    Add<CStartsWithFunction>(library);
    Add<CContainsFunction>(library);
    Add<CSubstringBeforeFunction>(library);
    Add<CSubstringAfterFunction>(library);
    Add<CSubstringFunction>(library);
    Add<CStringLengthFunction>(library);
    Add<CNormalizeSpaceFunction>(library);
    Add<CTranslateFunction>(library);
    Add<CBooleanFunction>(library);
    Add<CNotFunction>(library);
    Add<CTrueFunction>(library);
    Add<CFalseFunction>(library);
    Add<CLangFunction>(library);
    Add<CNumberFunction>(library);
    Add<CSumFunction>(library);
    Add<CFloorFunction>(library);
    Add<CCeilingFunction>(library);
    Add<CRoundFunction>(library);
}

}  // namespace XpathPrivate
