// The exception root and message rendering.
#include "core/Exception.h"

namespace Core {

void IException::GetMessage(DomString& text) const { text = u"? Unknown exception"; }

void FormatMessage(DomString& text, const DomChar* format, const DomChar* argument1, const DomChar* argument2,
                   const DomChar* argument3) {
    const DomChar* arguments[3] = {argument1, argument2, argument3};
    int next = 0;
    text.clear();
    for (const DomChar* p = format; *p; ++p) {
        if (p[0] == u'%' && p[1] == u's') {
            if (next < 3 && arguments[next]) {
                text += arguments[next];
                ++next;
            } else {
                text += u'?';
            }
            ++p;
        } else {
            text += *p;
        }
    }
}

const DomChar* FindMessageFormat(const SMessage* table, int code) {
    const SMessage* row = table;
    while (row->nCode != code && row->nCode != -1) ++row;
    return row->pFormat;
}

void FormatTableMessage(DomString& text, const SMessage* table, int code, const DomString& argument1,
                        const DomString& argument2) {
    FormatMessage(text, FindMessageFormat(table, code), argument1.c_str(), argument2.c_str(), nullptr);
}

}  // namespace Core
