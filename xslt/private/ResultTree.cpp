// Result tree construction: the start tag is completed only when something other than an
// attribute or namespace follows, so names and namespace declarations can be fixed at once.
#include "xslt/private/ResultTree.h"

#include "xslt/private/OutputException.h"

namespace XsltPrivate {

namespace {

// Views, so that comparisons know the lengths without measuring the texts each time.
constexpr DomStringView XmlNamespace = u"http://www.w3.org/XML/1998/namespace";
constexpr DomStringView XsltNamespace = u"http://www.w3.org/1999/XSL/Transform";
constexpr DomStringView XsltTextName = u"text";
constexpr DomStringView XmlSpaceName = u"space";
const int ReservedFrames = 64;
const int TextGrowth = 4096;

int LocalStart(DomStringView name) {
    size_t colon = name.rfind(u':');
    return colon == DomStringView::npos ? 0 : static_cast<int>(colon) + 1;
}

DomStringView LocalPart(DomStringView name) { return name.substr(LocalStart(name)); }

}  // namespace

// The tables are made at once, so that events before StartDocument find a document level.
CResultTree::CResultTree(Xslt::IResultHandler* sink) : m_pSink(sink) { Reset(); }

CResultTree::CResultTree(CEventBuffer* buffer) : m_pBuffer(buffer) {}

CResultTree::~CResultTree() {
    ResetFrames();
    for (CNamespaceMap* map : m_aFreeMaps) delete map;
}

void CResultTree::SetOutputProperties(XmlWriter::COutputProperties* properties) {
    m_pSettings = properties;
    if (m_pSink) m_pSink->SetOutputProperties(properties);
}

void CResultTree::StartDocument() {
    if (m_pBuffer) {
        m_pBuffer->Clear();
        m_pBuffer->Record(CEventBuffer::StartRecording);
        return;
    }
    Reset();
    m_pSink->StartDocument();
}

void CResultTree::EndDocument() {
    if (m_pBuffer) {
        m_pBuffer->Record(CEventBuffer::EndRecording);
        return;
    }
    CompleteStartTag();
    m_pSink->EndDocument();
}

void CResultTree::StartElement(DomStringView name, DomStringView uri) {
    if (m_pBuffer) {
        m_pBuffer->Record(CEventBuffer::StartElement, name, uri);
        return;
    }
    CompleteStartTag();
    const SFrame& parent = m_aFrames[m_nDepth];
    CNamespaceMap* map = parent.pMap;
    bool preserve = parent.bPreserve;
    int counter = parent.nCounter;
    SFrame& frame = PushFrame();
    frame.sName.assign(name);
    frame.nLocalStart = LocalStart(name);
    frame.sUri.assign(uri);
    frame.pMap = map;
    frame.bOwnsMap = false;
    frame.bPreserve = preserve;
    frame.nCounter = counter;
    m_bNamespacesChanged = false;
    m_attributes.Clear();
    m_bStartTagOpen = true;
}

void CResultTree::EndElement() {
    if (m_pBuffer) {
        m_pBuffer->Record(CEventBuffer::EndElement);
        return;
    }
    CompleteStartTag();
    if (m_nDepth == 0) return;  // unbalanced: nothing is open
    SFrame& frame = m_aFrames[m_nDepth];
    m_pSink->EndElement(frame.sName.c_str());
    ReleaseMap(frame);
    --m_nDepth;
}

void CResultTree::StartAttribute(DomStringView name, DomStringView uri) {
    if (m_pBuffer) {
        m_pBuffer->Record(CEventBuffer::StartAttribute, name, uri);
        return;
    }
    m_sAttributeName.assign(NameAttribute(name, uri));  // assign copes with a view of itself
    BeginCollecting(CollectingAttribute);
}

void CResultTree::EndAttribute() {
    if (m_pBuffer) {
        m_pBuffer->Record(CEventBuffer::EndAttribute);
        return;
    }
    if (m_nCollecting != CollectingAttribute) return;
    m_nCollecting = NotCollecting;
    AddAttribute(m_sAttributeName, CollectedText());
}

void CResultTree::Attribute(DomStringView name, DomStringView uri, DomStringView value) {
    if (m_pBuffer) {
        m_pBuffer->Record(CEventBuffer::StartAttribute, name, uri);
        m_pBuffer->RecordCharacters(value.data(), static_cast<int>(value.size()), false);
        m_pBuffer->Record(CEventBuffer::EndAttribute);
        return;
    }
    AddAttribute(NameAttribute(name, uri), value);
}

// The output name of an attribute of the open start tag: its local part when it has no
// namespace, else in m_sAttributeName.
DomStringView CResultTree::NameAttribute(DomStringView name, DomStringView uri) {
    if (!m_bStartTagOpen || m_nCollecting != NotCollecting) {
        throw new COutputException(COutputException::MisplacedAttribute, name, uri);
    }
    DomStringView localName = LocalPart(name);
    m_bXmlSpace = uri == XmlNamespace && localName == XmlSpaceName;
    if (uri.empty()) return localName;
    MakeName(uri, localName, true, m_sAttributeName);
    return m_sAttributeName;
}

void CResultTree::AddAttribute(DomStringView name, DomStringView value) {
    m_attributes.Add(name, value);
    if (m_bXmlSpace) m_aFrames[m_nDepth].bPreserve = value == u"preserve";
    m_bXmlSpace = false;
}

void CResultTree::StartNamespace(DomStringView prefix) {
    if (m_pBuffer) {
        m_pBuffer->Record(CEventBuffer::StartNamespace, prefix);
        return;
    }
    m_sAttributeName.assign(prefix);
    BeginCollecting(CollectingNamespace);
}

void CResultTree::EndNamespace() {
    if (m_pBuffer) {
        m_pBuffer->Record(CEventBuffer::EndNamespace);
        return;
    }
    if (m_nCollecting != CollectingNamespace) return;
    m_nCollecting = NotCollecting;
    BindNamespace(m_sAttributeName, CollectedText());
}

// Like StartNamespace, this gives up any text being collected.
void CResultTree::Namespace(DomStringView prefix, DomStringView uri) {
    if (m_pBuffer) {
        m_pBuffer->Record(CEventBuffer::StartNamespace, prefix);
        m_pBuffer->RecordCharacters(uri.data(), static_cast<int>(uri.size()), false);
        m_pBuffer->Record(CEventBuffer::EndNamespace);
        return;
    }
    m_nCollecting = NotCollecting;
    BindNamespace(prefix, uri);
}

// A namespace node with no start tag open to take it is dropped.
void CResultTree::BindNamespace(DomStringView prefix, DomStringView uri) {
    if (!m_bStartTagOpen) return;
    SFrame& frame = m_aFrames[m_nDepth];
    if (prefix.empty() && uri.empty() && frame.pMap->IsDefaultEmpty()) return;
    DomStringView bound;
    if (frame.pMap->FindUri(prefix, bound) && bound == uri) return;
    OwnMap(frame);
    frame.pMap->Add(prefix, uri, true);
    m_bNamespacesChanged = true;
}

void CResultTree::Characters(const DomChar* text, int length, bool disableEscaping) {
    if (m_pBuffer) {
        m_pBuffer->RecordCharacters(text, length, disableEscaping);
        return;
    }
    if (m_nCollecting != NotCollecting) {
        AppendText(text, length);
        return;
    }
    CompleteStartTag();
    m_pSink->Characters(text, length, disableEscaping);
}

void CResultTree::StartComment() {
    if (m_pBuffer) {
        m_pBuffer->Record(CEventBuffer::StartComment);
        return;
    }
    if (m_nCollecting != NotCollecting) throw new COutputException(COutputException::MisplacedComment);
    CompleteStartTag();
    BeginCollecting(CollectingComment);
}

void CResultTree::EndComment() {
    if (m_pBuffer) {
        m_pBuffer->Record(CEventBuffer::EndComment);
        return;
    }
    if (m_nCollecting != CollectingComment) return;
    m_nCollecting = NotCollecting;
    m_pSink->Comment(TerminatedText());
}

void CResultTree::ProcessingInstruction(DomStringView target, DomStringView data) {
    if (m_pBuffer) {
        m_pBuffer->Record(CEventBuffer::ProcessingInstruction, target, data);
        return;
    }
    if (m_nCollecting != NotCollecting) {
        throw new COutputException(COutputException::MisplacedProcessingInstruction, target);
    }
    CompleteStartTag();
    // Target and data go out zero-terminated, through the text buffer, which is free here.
    m_aText.Clear();
    AppendText(target.data(), static_cast<int>(target.size()));
    m_aText.Add(0);
    int dataOffset = m_aText.GetSize();
    AppendText(data.data(), static_cast<int>(data.size()));
    m_aText.Add(0);
    m_pSink->ProcessingInstruction(m_aText.GetData(), m_aText.GetData() + dataOffset);
}

void CResultTree::Initialise() {
    if (m_bInitialised) return;
    m_aFrames.Reserve(ReservedFrames);
    m_aFrames.SetSize(1);
    m_aText.Reserve(TextGrowth);
    m_namespaceMap.Add(u"", u"", false);
    m_namespaceMap.Add(u"xml", XmlNamespace, false);
    m_bInitialised = true;
}

void CResultTree::Reset() {
    Initialise();
    ResetFrames();
    SFrame& frame = m_aFrames[0];
    frame.pMap = &m_namespaceMap;
    frame.bOwnsMap = false;
    frame.bPreserve = false;
    frame.nCounter = 1;
    m_bNamespacesChanged = false;
    m_attributes.Clear();
    m_bStartTagOpen = false;
    m_nCollecting = NotCollecting;
    m_bXmlSpace = false;
    m_aText.Clear();
}

// Gives back the maps of frames left open, by a failure or by unbalanced events.
void CResultTree::ResetFrames() {
    for (int i = 1; i <= m_nDepth; ++i) ReleaseMap(m_aFrames[i]);
    m_nDepth = 0;
}

CResultTree::SFrame& CResultTree::PushFrame() {
    ++m_nDepth;
    if (m_nDepth == m_aFrames.GetSize()) m_aFrames.SetSize(m_nDepth + 1);
    return m_aFrames[m_nDepth];
}

void CResultTree::CompleteStartTag() {
    if (!m_bStartTagOpen) return;
    m_bStartTagOpen = false;
    SFrame& frame = m_aFrames[m_nDepth];
    if (LocalName(frame) == XsltTextName && DomStringView(frame.sUri) == XsltNamespace) frame.bPreserve = true;
    NameElement(frame);
    bool cdata = m_pSettings && m_pSettings->IsCDataSectionElement(frame.sUri, LocalName(frame));
    m_pSink->StartElement(frame.sName.c_str(), cdata, frame.bPreserve);
    if (m_bNamespacesChanged) DeclareNewNamespaces(*frame.pMap);
    for (int i = 0; i < m_attributes.GetCount(); ++i) {
        m_pSink->Attribute(m_attributes.GetName(i), m_attributes.GetValue(i));
    }
}

void CResultTree::DeclareNewNamespaces(const CNamespaceMap& map) {
    for (int i = 0; i < map.GetCount(); ++i) {
        if (map.IsLive(i) && map.IsNew(i)) m_pSink->Namespace(map.GetPrefix(i), map.GetUri(i));
    }
}

// The prefix for `uri` under the bindings of the top frame, binding a generated prefix "__N__"
// where the URI has none. The default namespace never applies to attributes.
DomStringView CResultTree::ChoosePrefix(DomStringView uri, bool isAttribute) {
    SFrame& frame = m_aFrames[m_nDepth];
    DomStringView prefix;
    if (frame.pMap->FindPrefix(uri, isAttribute, prefix)) return prefix;
    if (uri.empty()) throw new COutputException(COutputException::DefaultNamespaceNotAllowed);
    GeneratePrefix(frame, uri);
    return m_sPrefix;
}

// The name as given stays when it already has the chosen prefix, as it mostly has.
void CResultTree::NameElement(SFrame& frame) {
    DomStringView prefix = InheritedPrefix(frame);
    if (prefix.data() == nullptr) prefix = ChoosePrefix(frame.sUri, false);
    int localStart = prefix.empty() ? 0 : static_cast<int>(prefix.size()) + 1;
    if (frame.nLocalStart == localStart && DomStringView(frame.sName).starts_with(prefix)) return;
    m_sName.assign(prefix);
    if (!prefix.empty()) m_sName += u':';
    m_sName.append(LocalName(frame));
    frame.sName.swap(m_sName);
    frame.nLocalStart = localStart;
}

// An element in its parent's namespace under its parent's bindings takes its parent's prefix;
// null where that does not hold. A frame that shares its parent's map has changed no binding,
// and the parent's map does not change once its start tag is complete.
DomStringView CResultTree::InheritedPrefix(const SFrame& frame) const {
    if (m_nDepth < 2) return DomStringView();
    const SFrame& parent = m_aFrames[m_nDepth - 1];
    if (frame.pMap != parent.pMap || frame.sUri != parent.sUri) return DomStringView();
    if (parent.nLocalStart == 0) return DomStringView(u"", 0);
    return DomStringView(parent.sName.data(), parent.nLocalStart - 1);
}

void CResultTree::MakeName(DomStringView uri, DomStringView localName, bool isAttribute, DomString& name) {
    if (uri.empty() && isAttribute) {
        name.assign(localName);
        return;
    }
    name.assign(ChoosePrefix(uri, isAttribute));
    if (!name.empty()) name += u':';
    name += localName;
}

void CResultTree::GeneratePrefix(SFrame& frame, DomStringView uri) {
    OwnMap(frame);
    m_bNamespacesChanged = true;
    int number = frame.nCounter++;
    DomChar digits[12];
    int count = 0;
    do {
        digits[count++] = static_cast<DomChar>(u'0' + number % 10);
        number /= 10;
    } while (number > 0);
    m_sPrefix.assign(u"__");
    while (count > 0) m_sPrefix += digits[--count];
    m_sPrefix += u"__";
    frame.pMap->Add(m_sPrefix, uri, true);
}

// Copy on write: a frame takes a map of its own only when it changes a binding.
void CResultTree::OwnMap(SFrame& frame) {
    if (frame.bOwnsMap) return;
    CNamespaceMap* map;
    if (m_aFreeMaps.IsEmpty()) {
        map = new CNamespaceMap;
    } else {
        map = m_aFreeMaps.Last();
        m_aFreeMaps.RemoveLast();
    }
    map->CopyFrom(*frame.pMap);
    frame.pMap = map;
    frame.bOwnsMap = true;
}

void CResultTree::ReleaseMap(SFrame& frame) {
    if (!frame.bOwnsMap) return;
    m_aFreeMaps.Add(frame.pMap);
    frame.pMap = nullptr;
    frame.bOwnsMap = false;
}

void CResultTree::BeginCollecting(ECollecting what) {
    m_aText.Clear();
    m_nCollecting = what;
}

void CResultTree::AppendText(const DomChar* text, int length) {
    int needed = m_aText.GetSize() + length + 1;
    if (needed > m_aText.GetCapacity()) {
        int atLeast = m_aText.GetCapacity() + TextGrowth;
        m_aText.Reserve(needed > atLeast ? needed : atLeast);
    }
    m_aText.Append(text, length);
}

const DomChar* CResultTree::TerminatedText() {
    m_aText.Add(0);
    return m_aText.GetData();
}

}  // namespace XsltPrivate
