// The command line "kst [/Pparameter=value ...] document stylesheet output", scanned word by
// word; the first word that fails decides.
#pragma once
#include "core/DomString.h"
#include "xslt/ParameterList.h"

class CCommandLine {
public:
    enum EResult { Complete, InvalidParameter, Usage };

    // Words are widened byte by byte with sign extension, without any code page conversion.
    // On InvalidParameter, GetFailedWord gives the word.
    EResult Scan(int argc, const char* const* argv);

    const DomString& GetDocument() const { return m_sDocument; }
    const DomString& GetStylesheet() const { return m_sStylesheet; }
    const DomString& GetOutput() const { return m_sOutput; }
    const DomString& GetFailedWord() const { return m_sFailedWord; }
    Xslt::CParameterList* GetParameters() const { return m_pParameters; }

private:
    bool ScanParameter(const DomString& word);

    DomString m_sDocument;
    DomString m_sStylesheet;
    DomString m_sOutput;
    DomString m_sFailedWord;
    TRefPtr<Xslt::CParameterList> m_pParameters = new Xslt::CParameterList();
};
