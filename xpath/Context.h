// The context of an evaluation and the interfaces through which the host (the XSLT engine)
// supplies variables, functions, namespace prefixes, document order and extension types.
// A context is immutable; its iterator is live, so one derived context serves a whole loop.
#pragma once
#include <cstdint>

#include "core/Array.h"
#include "core/DomString.h"
#include "core/RefObject.h"
#include "dom/Node.h"
#include "xpath/Number.h"

namespace Xpath {

class CValue;
class CContext;
class CNodeIterator;
class CSortedNodeListFactory;

class IVariableBindings : public CRefObject {
public:
    // Leaves `value` null when the variable is unbound.
    virtual void GetVariable(TRefPtr<CValue>& value, const DomString& namespaceUri, const DomString& localName) = 0;
};

class IFunction : public CRefObject {
public:
    // The function checks its own arguments.
    virtual void Call(TRefPtr<CValue>& result, CContext* context, const TArray<TRefPtr<CValue>>& arguments) = 0;
};

class IFunctionLibrary : public CRefObject {
public:
    virtual bool IsFunctionAvailable(const DomString& namespaceUri, const DomString& localName) = 0;
    // Leaves `function` null when the name is unknown.
    virtual void GetFunction(TRefPtr<IFunction>& function, const DomString& namespaceUri,
                             const DomString& localName) = 0;
    // Nonzero, and shared by no other library of the process, when a function once found stays
    // the answer for its name while the library lives; a call site may then keep it. 0 otherwise.
    virtual uint64_t GetStableIdentity() const { return 0; }
};

class INamespaceResolver : public CRefObject {
public:
    virtual bool ResolvePrefix(const DomString& prefix, DomString& uri) = 0;
};

// Document order of the run, and the ID lookup that `id()` uses.
class INodeOrder : public CRefObject {
public:
    // The ID value of `node`, if the DTD of its document declared one of its attributes an ID.
    virtual bool GetElementId(const Dom::CNode* node, DomString& id) = 0;
    // The first element of `document` with the ID value `id`, or null.
    virtual Dom::CNode* GetElementById(const Dom::CNode* document, DomStringView id) = 0;
    // Negative, zero or positive as `a` stands before, at or after `b`.
    virtual int Compare(const Dom::CNode* a, const Dom::CNode* b) = 0;
};

// The node order and ID index kept by the documents themselves; what a host without its own
// key tables uses.
class CDocumentNodeOrder : public INodeOrder {
public:
    bool GetElementId(const Dom::CNode* node, DomString& id) override;
    Dom::CNode* GetElementById(const Dom::CNode* document, DomStringView id) override;
    int Compare(const Dom::CNode* a, const Dom::CNode* b) override;
};

// Conversions of extension data types (type codes above 3).
class IExtensionConverter : public CRefObject {
public:
    virtual bool ToBoolean(CContext* context, CValue* value) = 0;
    virtual void ToNumber(CNumber& number, CContext* context, CValue* value) = 0;
    virtual void ToString(DomString& text, CContext* context, CValue* value) = 0;
};

// Comparison of a node-set with an extension value; `op` as in CComparer.
class IExtensionComparer : public CRefObject {
public:
    // The node-set stands on the left.
    virtual bool CompareLeft(int op, CValue* nodeSet, CValue* extension) = 0;
    // The extension value stands on the left.
    virtual bool CompareRight(int op, CValue* extension, CValue* nodeSet) = 0;
};

class IExtensionTypes : public CRefObject {
public:
    virtual CSortedNodeListFactory* GetListFactory() = 0;
    virtual IExtensionConverter* GetConverter() = 0;
    virtual IExtensionComparer* GetComparer() = 0;
};

// Extension types with nothing special: the value's own getters convert it, and a comparison
// with a node-set fails with message 18.
class CDefaultExtensionTypes : public IExtensionTypes {
public:
    CDefaultExtensionTypes();
    ~CDefaultExtensionTypes() override;
    CSortedNodeListFactory* GetListFactory() override;
    IExtensionConverter* GetConverter() override { return m_pConverter; }
    IExtensionComparer* GetComparer() override { return m_pComparer; }

private:
    TRefPtr<CSortedNodeListFactory> m_pListFactory;
    TRefPtr<IExtensionConverter> m_pConverter;
    TRefPtr<IExtensionComparer> m_pComparer;
};

class CContext : public CRefObject {
public:
    // Variables, functions and namespaces may be null (every name then fails to resolve); a
    // null node order or extension-type table is replaced by the defaults.
    CContext(CNodeIterator* iterator, IVariableBindings* variables, IFunctionLibrary* functions,
             INamespaceResolver* namespaces, INodeOrder* nodeOrder, IExtensionTypes* extensionTypes);
    // Shares everything with `base` but the iterator.
    CContext(const CContext* base, CNodeIterator* iterator);
    ~CContext() override;

    // A context on one node (position 1, size 1) with the services of `base`.
    static void CreateForNode(TRefPtr<CContext>& context, const CContext* base, Dom::CNode* node);

    CNodeIterator* GetIterator() const { return m_pIterator; }
    IVariableBindings* GetVariables() const { return m_pVariables; }
    IFunctionLibrary* GetFunctions() const { return m_pFunctions; }
    INamespaceResolver* GetNamespaces() const { return m_pNamespaces; }
    INodeOrder* GetNodeOrder() const { return m_pNodeOrder; }
    IExtensionTypes* GetExtensionTypes() const { return m_pExtensionTypes; }

    // The iterator's current node, position, and the length of its node-set.
    Dom::CNode* GetNode() const;
    int32_t GetPosition() const;
    int32_t GetSize() const;

private:
    TRefPtr<CNodeIterator> m_pIterator;
    TRefPtr<IVariableBindings> m_pVariables;
    TRefPtr<IFunctionLibrary> m_pFunctions;
    TRefPtr<INamespaceResolver> m_pNamespaces;
    TRefPtr<INodeOrder> m_pNodeOrder;
    TRefPtr<IExtensionTypes> m_pExtensionTypes;
};

}  // namespace Xpath
