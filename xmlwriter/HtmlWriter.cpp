// The html output method on top of the xml writer's steps and the shared writer core.
#include "xmlwriter/HtmlWriter.h"

#include "xmlwriter/WriterException.h"
#include "xmlwriter/private/HtmlNameTable.h"
#include "xmlwriter/private/WriterOutput.h"

namespace XmlWriter {

using XmlWriterPrivate::CHtmlNameTable;
using XmlWriterPrivate::kHtmlAttributeEscapes;

namespace {

enum : unsigned int { EmptyElement = 1, RawTextElement = 2, BooleanAttribute = 1, UriAttribute = 2 };

const DomChar* const kEmptyElements[] = {u"area", u"base",  u"basefont", u"br",   u"col",  u"frame", u"hr",
                                         u"img",  u"input", u"isindex",  u"link", u"meta", u"param"};
const DomChar* const kRawTextElements[] = {u"script", u"style"};
const DomChar* const kBooleanAttributes[] = {u"checked",  u"compact", u"declare",  u"defer",    u"disabled",
                                             u"ismap",    u"multiple", u"nohref",  u"noresize", u"noshade",
                                             u"nowrap",   u"readonly", u"selected"};
const DomChar* const kUriAttributes[] = {u"action", u"background", u"cite",     u"classid", u"codebase", u"data",
                                         u"href",   u"longdesc",   u"profile",  u"src",     u"usemap"};

template <size_t N>
void AddNames(CHtmlNameTable& table, const DomChar* const (&names)[N], unsigned int flags) {
    for (const DomChar* name : names) table.Add(name, flags);
}

constexpr DomStringView kHeadName = u"head";  // a view, so that its length is not measured each time

bool EqualsIgnoringAsciiCase(DomStringView text, DomStringView lowerWord) {
    if (text.size() != lowerWord.size()) return false;
    for (size_t i = 0; i < text.size(); ++i) {
        DomChar unit = text[i];
        if (unit >= u'A' && unit <= u'Z') unit = static_cast<DomChar>(unit + 32);
        if (unit != lowerWord[i]) return false;
    }
    return true;
}

DomChar HexDigit(unsigned int value) { return static_cast<DomChar>(value < 10 ? u'0' + value : u'A' + value - 10); }

bool IsHighSurrogate(DomChar unit) { return unit >= 0xD800 && unit <= 0xDBFF; }
bool IsLowSurrogate(DomChar unit) { return unit >= 0xDC00 && unit <= 0xDFFF; }

// The UTF-8 bytes of one character; returns their number.
int ToUtf8(unsigned int codePoint, unsigned char* bytes) {
    if (codePoint < 0x800) {
        bytes[0] = static_cast<unsigned char>(0xC0 | (codePoint >> 6));
        bytes[1] = static_cast<unsigned char>(0x80 | (codePoint & 0x3F));
        return 2;
    }
    if (codePoint < 0x10000) {
        bytes[0] = static_cast<unsigned char>(0xE0 | (codePoint >> 12));
        bytes[1] = static_cast<unsigned char>(0x80 | ((codePoint >> 6) & 0x3F));
        bytes[2] = static_cast<unsigned char>(0x80 | (codePoint & 0x3F));
        return 3;
    }
    bytes[0] = static_cast<unsigned char>(0xF0 | (codePoint >> 18));
    bytes[1] = static_cast<unsigned char>(0x80 | ((codePoint >> 12) & 0x3F));
    bytes[2] = static_cast<unsigned char>(0x80 | ((codePoint >> 6) & 0x3F));
    bytes[3] = static_cast<unsigned char>(0x80 | (codePoint & 0x3F));
    return 4;
}

}  // namespace

CHtmlWriter::CHtmlWriter() : m_pElements(new CHtmlNameTable), m_pAttributes(new CHtmlNameTable) {
    AddNames(*m_pElements, kEmptyElements, EmptyElement);
    AddNames(*m_pElements, kRawTextElements, RawTextElement);
    AddNames(*m_pAttributes, kBooleanAttributes, BooleanAttribute);
    AddNames(*m_pAttributes, kUriAttributes, UriAttribute);
}

CHtmlWriter::~CHtmlWriter() {
    delete m_pElements;
    delete m_pAttributes;
}

DomStringView CHtmlWriter::GetDefaultVersion() const { return u"4.0"; }
bool CHtmlWriter::GetDefaultIndent() const { return true; }
void CHtmlWriter::WriteDeclaration() {}
DomStringView CHtmlWriter::GetProcessingInstructionEnd() const { return u">"; }

void CHtmlWriter::ClassifyElement(SElementRow& row, DomStringView name) {
    row.bHtml = name.find(u':') == DomStringView::npos;
    if (!row.bHtml) return;
    unsigned int flags = m_pElements->Find(name);
    row.bEmpty = (flags & EmptyElement) != 0;
    row.bRawText = (flags & RawTextElement) != 0;
}

// The word HTML is fixed, whatever the root element is called.
void CHtmlWriter::WriteDocumentType(DomStringView) {
    DomString publicId, systemId;
    bool hasPublic = m_pProperties->GetDoctypePublic(publicId);
    bool hasSystem = m_pProperties->GetDoctypeSystem(systemId);
    if (!hasPublic && !hasSystem) return;
    m_pOutput->WriteRaw(u"<!DOCTYPE HTML");
    if (hasPublic) {
        WriteDoctypeIdentifier(u" PUBLIC \"", publicId);
        if (hasSystem) WriteDoctypeIdentifier(u" \"", systemId);
    } else {
        WriteDoctypeIdentifier(u" SYSTEM \"", systemId);
    }
    m_pOutput->WriteRaw(u">");
    m_pOutput->WriteRaw(kNewline);
}

bool CHtmlWriter::IsHead(const SElementRow& row) const { return EqualsIgnoringAsciiCase(RowName(row), kHeadName); }

// Written after every head element, whether or not the stylesheet writes a META of its own.
void CHtmlWriter::WriteMeta() {
    WriteIndent();
    m_pOutput->WriteRaw(u"<META http-equiv=\"Content-Type\" content=\"");
    DomString mediaType;
    if (m_pProperties->GetMediaType(mediaType)) {
        m_pOutput->WriteMarkup(mediaType);
    } else {
        m_pOutput->WriteRaw(u"text/html");
    }
    m_pOutput->WriteRaw(u"; charset=");
    m_pOutput->WriteMarkup(m_sEncoding);
    m_pOutput->WriteRaw(u"\">");
    m_pOutput->WriteRaw(kNewline);
}

void CHtmlWriter::CloseStartTag() {
    if (!m_bInStartTag) return;
    m_pOutput->WriteRaw(u">");
    if (IsHead(TopRow())) WriteMeta();
    m_bInStartTag = false;
}

void CHtmlWriter::EndElement() {
    if (GetDepth() == 0) return;  // unbalanced: no element is open
    CloseCData();
    m_nIndentColumn -= m_nIndentStep;
    const SElementRow& row = TopRow();
    if (!m_bInStartTag) {
        WriteIndent();
        WriteEndTag(row);
    } else {
        if (!row.bHtml) {
            m_pOutput->WriteRaw(u"/>");
        } else {
            m_pOutput->WriteRaw(u">");
            if (!row.bEmpty) WriteEndTag(row);
        }
        if (IsHead(row)) WriteMeta();
        m_bInStartTag = false;
    }
    m_bCanIndent = true;
    PopRow();
}

void CHtmlWriter::WriteAttribute(const DomChar* name, const DomChar* value) {
    if (!TopRow().bHtml) {
        WriteAttributeText(name, value);
        return;
    }
    DomStringView nameText = name ? DomStringView(name) : DomStringView();
    unsigned int flags = m_pAttributes->Find(nameText);
    m_pOutput->WriteRaw(u" ");
    m_pOutput->WriteMarkup(nameText);
    if (flags & BooleanAttribute) return;
    m_pOutput->WriteRaw(u"=\"");
    DomStringView valueText = value ? DomStringView(value) : DomStringView();
    if (flags & UriAttribute) {
        valueText = EscapeUri(valueText);
    }
    m_pOutput->WriteEscaped(valueText.data(), static_cast<int>(valueText.size()), kHtmlAttributeEscapes);
    m_pOutput->WriteRaw(u"\"");
}

// Units below 0x100 stay as they are; others become "%" escapes of their UTF-8 bytes. The
// second unit of each escape is the byte plus 0x37, not a hex digit: output that has always
// been read this way must stay the same. A value with nothing to escape is used as it is.
DomStringView CHtmlWriter::EscapeUri(DomStringView value) {
    size_t plain = 0;
    while (plain < value.size() && value[plain] < 0x100) ++plain;
    if (plain == value.size()) return value;
    m_sEscapedUri.assign(value.substr(0, plain));
    for (size_t i = plain; i < value.size(); ++i) {
        unsigned int unit = value[i];
        if (unit < 0x100) {
            m_sEscapedUri += static_cast<DomChar>(unit);
            continue;
        }
        if (unit >= 0xD800 && unit <= 0xDFFF) {
            if (!IsHighSurrogate(value[i]) || i + 1 >= value.size() || !IsLowSurrogate(value[i + 1])) {
                throw new CWriterException(CWriterException::InvalidSurrogatePair);
            }
            unit = 0x10000 + ((unit - 0xD800) << 10) + (value[i + 1] - 0xDC00u);
            ++i;
        }
        unsigned char bytes[4];
        int length = ToUtf8(unit, bytes);
        for (int b = 0; b < length; ++b) {
            m_sEscapedUri += u'%';
            m_sEscapedUri += HexDigit(bytes[b] >> 4);
            m_sEscapedUri += static_cast<DomChar>(bytes[b] + 0x37);
        }
    }
    return m_sEscapedUri;
}

}  // namespace XmlWriter
