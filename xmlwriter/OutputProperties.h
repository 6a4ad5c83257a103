// The attributes of xsl:output as the writers read them: each property has a bit in a mask
// that says whether it was set, and the cdata-section-elements are kept as expanded names.
#pragma once
#include "core/Array.h"
#include "core/DomString.h"
#include "core/RefObject.h"

namespace XmlWriter {

class COutputProperties : public CRefObject {
public:
    enum EBit : unsigned int {
        MethodKindBit = 0x001,
        MethodNameBit = 0x002,
        VersionBit = 0x004,
        EncodingBit = 0x008,
        OmitXmlDeclarationBit = 0x010,
        StandaloneBit = 0x020,
        DoctypePublicBit = 0x040,
        DoctypeSystemBit = 0x080,
        IndentBit = 0x100,
        MediaTypeBit = 0x200
    };
    enum EMethodKind { XmlMethod = 0, HtmlMethod = 1, TextMethod = 2 };

    unsigned int GetMask() const { return m_nMask; }
    bool IsSet(unsigned int bit) const { return (m_nMask & bit) != 0; }

    // Each Get leaves its argument alone and returns false when the property was not set.
    bool GetMethodKind(int& kind) const;
    void SetMethodKind(int kind);
    bool GetMethodName(DomString& uri, DomString& localName) const;
    void SetMethodName(DomStringView uri, DomStringView localName);
    bool GetVersion(DomString& version) const { return GetText(VersionBit, m_sVersion, version); }
    void SetVersion(DomStringView version) { SetText(VersionBit, m_sVersion, version); }
    bool GetEncoding(DomString& encoding) const { return GetText(EncodingBit, m_sEncoding, encoding); }
    void SetEncoding(DomStringView encoding) { SetText(EncodingBit, m_sEncoding, encoding); }
    bool GetOmitXmlDeclaration(bool& omit) const { return GetFlag(OmitXmlDeclarationBit, m_bOmitXmlDeclaration, omit); }
    void SetOmitXmlDeclaration(bool omit) { SetFlag(OmitXmlDeclarationBit, m_bOmitXmlDeclaration, omit); }
    bool GetStandalone(bool& standalone) const { return GetFlag(StandaloneBit, m_bStandalone, standalone); }
    void SetStandalone(bool standalone) { SetFlag(StandaloneBit, m_bStandalone, standalone); }
    bool GetDoctypePublic(DomString& id) const { return GetText(DoctypePublicBit, m_sDoctypePublic, id); }
    void SetDoctypePublic(DomStringView id) { SetText(DoctypePublicBit, m_sDoctypePublic, id); }
    bool GetDoctypeSystem(DomString& id) const { return GetText(DoctypeSystemBit, m_sDoctypeSystem, id); }
    void SetDoctypeSystem(DomStringView id) { SetText(DoctypeSystemBit, m_sDoctypeSystem, id); }
    bool GetIndent(bool& indent) const { return GetFlag(IndentBit, m_bIndent, indent); }
    void SetIndent(bool indent) { SetFlag(IndentBit, m_bIndent, indent); }
    bool GetMediaType(DomString& type) const { return GetText(MediaTypeBit, m_sMediaType, type); }
    void SetMediaType(DomStringView type) { SetText(MediaTypeBit, m_sMediaType, type); }

    // The cdata-section-elements of all declarations, as one set of expanded names.
    void AddCDataSectionElement(DomStringView uri, DomStringView localName);
    // Called for every result element, so an empty set answers at once.
    bool IsCDataSectionElement(DomStringView uri, DomStringView localName) const;

private:
    struct SExpandedName {
        unsigned int nHash;
        DomString sUri;
        DomString sLocalName;
    };

    bool GetText(unsigned int bit, const DomString& value, DomString& out) const;
    void SetText(unsigned int bit, DomString& value, DomStringView text);
    bool GetFlag(unsigned int bit, bool value, bool& out) const;
    void SetFlag(unsigned int bit, bool& value, bool flag);

    unsigned int m_nMask = 0;
    int m_nMethodKind = 0;
    DomString m_sMethodUri;
    DomString m_sMethodLocalName;
    DomString m_sVersion;
    DomString m_sEncoding;
    bool m_bOmitXmlDeclaration = false;
    bool m_bStandalone = false;
    DomString m_sDoctypePublic;
    DomString m_sDoctypeSystem;
    bool m_bIndent = false;
    DomString m_sMediaType;
    TArray<SExpandedName> m_aCDataSectionElements;
};

}  // namespace XmlWriter
