// The String methods that take a regular expression: match, search and replace. A RegExp
// object gives its own compiled pattern; anything else is compiled from its text, without flags.
#include "ecmascript/Conversions.h"
#include "ecmascript/GlobalObject.h"
#include "ecmascript/RuntimeError.h"
#include "ecmascript/private/ArrayObject.h"
#include "ecmascript/private/RegExpObject.h"
#include "ecmascript/private/StringObject.h"

namespace EcmaScriptPrivate {

using namespace EcmaScript;

namespace {

TRefPtr<CRegExp> PatternOf(CValue* value) {
    if (CRegExpObject* object = CRegExpObject::From(value)) return object->GetRegExp();
    DomString text = value->GetType() == TypeUndefined ? DomString() : ToString(value);
    return new CRegExp(text, false, false, false);
}

// Steps through the matches of a pattern: all of them from the start for a global one, the
// first for another; an empty match steps the index on by one. The pattern's last index is not
// used while stepping, so a replacement function may use the same pattern meanwhile; it is 0 at
// the end, as after the last failing step.
class CMatchSteps {
public:
    CMatchSteps(CRegExp* regexp, const DomString& text) : m_pRegExp(regexp), m_text(text) {}
    ~CMatchSteps() { m_pRegExp->SetLastIndex(0); }

    bool Next(CMatchResult& match) {
        if (m_bDone || !m_pRegExp->Scan(m_text, m_nFrom, match)) return false;
        m_bDone = !m_pRegExp->GetGlobal();
        m_nFrom = match.GetEnd(0) + (match.GetLength(0) == 0 ? 1 : 0);
        m_bDone = m_bDone || m_nFrom > static_cast<int>(m_text.size());
        return true;
    }

private:
    TRefPtr<CRegExp> m_pRegExp;
    const DomString& m_text;
    int m_nFrom = 0;
    bool m_bDone = false;
};

// Replacement refuses results beyond 2^26 units (128 MB), as concatenation does.
constexpr size_t kMaxTextLength = size_t(1) << 26;

// The capture named by the digits after a '$': two digits if they name a capture, else one,
// else none (0). `used` receives the digits taken.
int CaptureReference(const DomString& replacement, size_t at, int captureCount, size_t& used) {
    auto digit = [&](size_t i) { return i < replacement.size() && replacement[i] >= u'0' && replacement[i] <= u'9'; };
    if (!digit(at)) return 0;
    int first = replacement[at] - u'0';
    if (digit(at + 1)) {
        int both = first * 10 + (replacement[at + 1] - u'0');
        if (both >= 1 && both <= captureCount) {
            used = 2;
            return both;
        }
    }
    used = 1;
    return first >= 1 && first <= captureCount ? first : 0;
}

void ExpandReplacement(DomString& out, const DomString& replacement, const DomString& text, const CMatchResult& match) {
    int captureCount = match.GetCount() - 1;
    for (size_t i = 0; i < replacement.size(); ++i) {
        DomChar unit = replacement[i];
        DomChar next = i + 1 < replacement.size() ? replacement[i + 1] : 0;
        if (unit != u'$' || !next) {
            out += unit;
            continue;
        }
        size_t used = 0;
        int capture = CaptureReference(replacement, i + 1, captureCount, used);
        if (next == u'$') {
            out += u'$';
        } else if (next == u'&') {
            out += match.GetText(text, 0);
        } else if (next == u'`') {
            out.append(text, 0, static_cast<size_t>(match.GetStart(0)));
        } else if (next == u'\'') {
            out.append(text, static_cast<size_t>(match.GetEnd(0)));
        } else if (capture) {
            out += match.GetText(text, capture);
            i += used;
            continue;
        } else {
            out += unit;  // "$0" and any other '$' stand as they are
            continue;
        }
        ++i;
    }
}

DomString CallReplacer(CObject* function, const DomString& text, const CMatchResult& match) {
    CValueList arguments;
    for (int n = 0; n < match.GetCount(); ++n)
        arguments.Add(match.IsSet(n) ? CValue::String(DomString(match.GetText(text, n))).Get() : CValue::Undefined());
    arguments.Add(CValue::Integer(match.GetStart(0)));
    arguments.Add(CValue::String(text));
    return ToString(function->Call(nullptr, arguments));
}

}  // namespace

TRefPtr<CValue> StringMatch(CGlobalObject* global, const DomString& text, CValue* pattern) {
    TRefPtr<CRegExp> regexp = PatternOf(pattern);
    CMatchSteps steps(regexp, text);
    CMatchResult match;
    if (!steps.Next(match)) return CValue::Null();
    if (!regexp->GetGlobal()) return CValue::Object(MakeMatchArray(global, text, match));
    TRefPtr<CArrayObject> array = new CArrayObject(global);
    do
        array->Append(CValue::String(DomString(match.GetText(text, 0))));
    while (steps.Next(match));
    return CValue::Object(array.Get());
}

TRefPtr<CValue> StringSearch(const DomString& text, CValue* pattern) {
    return CValue::Integer(PatternOf(pattern)->Search(text));
}

TRefPtr<CValue> StringReplace(const DomString& text, CValue* search, CValue* replacement) {
    CObject* function = replacement->GetObject();
    if (function && DomStringView(function->GetClass()) != u"Function") function = nullptr;
    DomString replacementText = function ? DomString() : ToString(replacement);
    DomString out;
    size_t copied = 0;
    auto replace = [&](const CMatchResult& match) {
        out.append(text, copied, static_cast<size_t>(match.GetStart(0)) - copied);
        if (function)
            out += CallReplacer(function, text, match);
        else
            ExpandReplacement(out, replacementText, text, match);
        copied = static_cast<size_t>(match.GetEnd(0));
        if (out.size() > kMaxTextLength) throw new CRuntimeError(CRuntimeError::OutOfMemory);
    };
    if (CRegExpObject* object = CRegExpObject::From(search)) {
        CMatchSteps steps(object->GetRegExp(), text);
        CMatchResult match;
        while (steps.Next(match)) replace(match);
    } else {
        DomString plain = ToString(search);
        size_t found = text.find(plain);
        if (found != DomString::npos)
            replace(CMatchResult::Single(static_cast<int>(found), static_cast<int>(plain.size())));
    }
    out.append(text, copied);
    return CValue::String(std::move(out));
}

}  // namespace EcmaScriptPrivate
