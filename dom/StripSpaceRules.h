// Which elements keep their whitespace-only text: rules by expanded name, by namespace
// ("prefix:*") and a default, each with a priority (the import precedence).
#pragma once
#include "core/RefObject.h"
#include "core/DomString.h"

namespace Dom {

class CStripSpaceRules : public CRefObject {
public:
    CStripSpaceRules();
    ~CStripSpaceRules() override;

    // A null uri sets the default rule, a null localName the rule of the uri, both the rule of
    // the name. The new value wins unless the rule is set with a higher priority. False only
    // when the priorities were equal (a conflict the caller reports). Texts are zero-terminated
    // (DomString::c_str()).
    bool AddRule(const DomChar* uri, const DomChar* localName, int priority, bool preserve);
    // The name's rule, else the uri's, else the default; true where none is set.
    bool ShouldPreserve(DomStringView uri, DomStringView localName) const;
    void SetAnyStrip(bool flag) { m_bAnyStrip = flag; }
    bool GetAnyStrip() const { return m_bAnyStrip; }

    struct SRule {
        bool bSet = false;
        int nPriority = 0;
        bool bPreserve = false;
    };

private:
    struct SEntry;
    template <class T>
    struct TTable;

    static bool Apply(SRule& rule, int priority, bool preserve);

    bool m_bAnyStrip;
    SRule m_oDefault;
    TTable<SEntry>* m_pEntries;
};

}  // namespace Dom
