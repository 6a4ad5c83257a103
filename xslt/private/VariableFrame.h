// The local variables in view of a template invocation. One frame serves a whole template;
// sequences mark its length on entry and cut it back on exit, which gives locals their scope.
// Lookups that find nothing here go to the run's global variables.
#pragma once
#include "core/Array.h"
#include "core/DomString.h"
#include "xpath/Context.h"
#include "xpath/Value.h"
#include "xslt/private/QName.h"

namespace XsltPrivate {

class CRuntime;

class CVariableFrame : public Xpath::IVariableBindings {
public:
    // A global frame sees only the global variables.
    explicit CVariableFrame(CRuntime* runtime) : m_pRuntime(runtime) {}

    int GetMark() const { return m_aEntries.GetSize(); }
    void PopTo(int mark) {
        if (m_aEntries.GetSize() > mark) PopEntries(mark);
    }
    // Empties the frame for its next use and lets go of its expression context.
    void Reset();
    bool Contains(DomStringView uri, DomStringView localName) const;
    // `name` belongs to the compiled stylesheet, which outlives every frame.
    void Add(const SQName* name, Xpath::CValue* value);
    // Local lookup, newest first.
    Xpath::CValue* FindLocal(DomStringView uri, DomStringView localName) const;

    void GetVariable(TRefPtr<Xpath::CValue>& value, const DomString& namespaceUri,
                     const DomString& localName) override;

    // The expression context last made on this frame; instructions of one invocation share it
    // while they run on the same node list with the same namespace bindings. It holds the
    // frame, so the frame's owner breaks the cycle with Reset.
    TRefPtr<Xpath::CContext> m_pXpathContext;

private:
    void PopEntries(int mark);

    struct SEntry {
        const SQName* pName;
        TRefPtr<Xpath::CValue> pValue;
    };
    CRuntime* m_pRuntime;
    TArray<SEntry> m_aEntries;
};

}  // namespace XsltPrivate
