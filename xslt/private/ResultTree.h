// The filter between instructions and a result handler: completes start tags late, fixes
// namespace prefixes, collects attribute, namespace and comment text, and refuses what cannot
// be output. In buffer mode it records the events instead (a result tree fragment).
//
// Use: make one per output (the run's result, each xsl:message, each processing-instruction
// body, each result tree fragment), call StartDocument, the events, EndDocument. A fragment is
// copied into another tree with CEventBuffer::Replay. Failures are COutputException, which the
// execution context turns into its fatal "Output error".
#pragma once
#include "core/Array.h"
#include "core/DomString.h"
#include "core/RefObject.h"
#include "xmlwriter/OutputProperties.h"
#include "xslt/ResultHandler.h"
#include "xslt/private/EventBuffer.h"
#include "xslt/private/NamespaceMap.h"
#include "xslt/private/ResultAttributes.h"

namespace XsltPrivate {

class CResultTree : public CRefObject {
public:
    // Stream mode: events go, completed, to `sink`.
    explicit CResultTree(Xslt::IResultHandler* sink);
    // Buffer mode: events are recorded into `buffer`, which the fragment's value keeps.
    explicit CResultTree(CEventBuffer* buffer);
    CResultTree(const CResultTree&) = delete;
    CResultTree& operator=(const CResultTree&) = delete;
    ~CResultTree() override;

    // Keeps the settings for their cdata-section-elements and passes them on to the sink.
    void SetOutputProperties(XmlWriter::COutputProperties* properties);

    // Resets the tree and tells the sink.
    void StartDocument();
    void EndDocument();
    // `name` may carry a prefix; only the part behind the last ":" is used, the prefix of the
    // output is chosen from the bindings in force when the start tag is completed.
    void StartElement(DomStringView name, DomStringView uri);
    void EndElement();
    // Attribute text arrives through Characters up to EndAttribute.
    void StartAttribute(DomStringView name, DomStringView uri);
    void EndAttribute();
    // The namespace's URI arrives through Characters up to EndNamespace.
    void StartNamespace(DomStringView prefix);
    void EndNamespace();
    // The same as the three events of an attribute or a namespace, with the text in one piece.
    void Attribute(DomStringView name, DomStringView uri, DomStringView value);
    void Namespace(DomStringView prefix, DomStringView uri);
    void Characters(const DomChar* text, int length, bool disableEscaping);
    // The comment's text arrives through Characters up to EndComment.
    void StartComment();
    void EndComment();
    void ProcessingInstruction(DomStringView target, DomStringView data);

    bool IsBufferMode() const { return m_pBuffer != nullptr; }

private:
    // What text is being collected for.
    enum ECollecting { NotCollecting, CollectingAttribute, CollectingNamespace, CollectingComment };

    // One open element. Frames are kept when popped, so their strings keep their room.
    struct SFrame {
        // The qualified name as given, until the completed start tag gives it its final prefix.
        DomString sName;
        int nLocalStart = 0;  // where the local part of sName begins
        DomString sUri;
        CNamespaceMap* pMap = nullptr;
        bool bOwnsMap = false;
        bool bPreserve = false;
        int nCounter = 1;  // for generated prefixes
    };

    void Initialise();
    void Reset();
    void ResetFrames();
    SFrame& PushFrame();
    void CompleteStartTag();
    DomStringView NameAttribute(DomStringView name, DomStringView uri);
    void AddAttribute(DomStringView name, DomStringView value);
    void BindNamespace(DomStringView prefix, DomStringView uri);
    void DeclareNewNamespaces(const CNamespaceMap& map);
    static DomStringView LocalName(const SFrame& frame) { return DomStringView(frame.sName).substr(frame.nLocalStart); }
    DomStringView ChoosePrefix(DomStringView uri, bool isAttribute);
    void NameElement(SFrame& frame);
    DomStringView InheritedPrefix(const SFrame& frame) const;
    void MakeName(DomStringView uri, DomStringView localName, bool isAttribute, DomString& name);
    void GeneratePrefix(SFrame& frame, DomStringView uri);
    void OwnMap(SFrame& frame);
    void ReleaseMap(SFrame& frame);
    void BeginCollecting(ECollecting what);
    void AppendText(const DomChar* text, int length);
    DomStringView CollectedText() const { return DomStringView(m_aText.GetData(), m_aText.GetSize()); }
    const DomChar* TerminatedText();

    TRefPtr<Xslt::IResultHandler> m_pSink;
    TRefPtr<CEventBuffer> m_pBuffer;
    TRefPtr<XmlWriter::COutputProperties> m_pSettings;
    bool m_bInitialised = false;
    TArray<SFrame> m_aFrames;
    int m_nDepth = 0;
    bool m_bNamespacesChanged = false;
    CNamespaceMap m_namespaceMap;
    CResultAttributes m_attributes;
    bool m_bStartTagOpen = false;
    ECollecting m_nCollecting = NotCollecting;
    bool m_bXmlSpace = false;
    DomString m_sAttributeName;  // or the prefix of the namespace being collected
    TArray<DomChar> m_aText;
    TArray<CNamespaceMap*> m_aFreeMaps;  // maps of closed frames, kept for reuse
    DomString m_sPrefix;                 // scratch for generated prefixes
    DomString m_sName;                   // scratch for renamed elements
};

}  // namespace XsltPrivate
