// Argument scanning: "/P" or "-P" words are parameters, the rest fill three positions.
#include "core/main/CommandLine.h"

static bool IsParameterWord(DomStringView word) {
    return word.size() >= 2 && (word[0] == u'/' || word[0] == u'-') && word[1] == u'P';
}

// The first "=" at or behind the third character divides name and value.
bool CCommandLine::ScanParameter(const DomString& word) {
    size_t equals = word.find(u'=', 2);
    if (equals == DomString::npos) return false;
    DomStringView view(word);
    m_pParameters->AddParameter(view.substr(2, equals - 2), view.substr(equals + 1));
    return true;
}

CCommandLine::EResult CCommandLine::Scan(int argc, const char* const* argv) {
    DomString* positions[3] = {&m_sDocument, &m_sStylesheet, &m_sOutput};
    int positional = 0;
    for (int i = 1; i < argc; ++i) {
        DomString word = Core::WidenSigned(argv[i]);
        if (IsParameterWord(word)) {
            if (ScanParameter(word)) continue;
            m_sFailedWord = std::move(word);
            return InvalidParameter;
        }
        if (positional == 3) return Usage;
        *positions[positional++] = std::move(word);
    }
    return positional == 3 ? Complete : Usage;
}
