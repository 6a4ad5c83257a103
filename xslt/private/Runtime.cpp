// Building the run's tables from the module tree, the run's parameters, and global variables
// evaluated on demand.
#include "xslt/private/Runtime.h"

#include "xpath/NodeSet.h"
#include "xpath/XpathException.h"
#include "xslt/XsltException.h"
#include "xslt/private/ExecutionContext.h"
#include "xslt/private/Locator.h"
#include "xslt/private/NamespaceContext.h"
#include "xslt/private/StylesheetModule.h"
#include "xslt/private/Template.h"
#include "xslt/private/VariableFrame.h"
#include "xslt/private/VariableInstruction.h"
#include "xslt/private/DiagnosticReporter.h"
#include "xslt/private/XsltFunctions.h"

namespace XsltPrivate {

namespace {

using Xslt::CXsltException;

// The attributes of xsl:output with their bits, in the order they are merged.
struct SOutputAttribute {
    const DomChar* pName;
    unsigned int nBits;
};
const SOutputAttribute s_aOutputAttributes[] = {
    {u"method", XmlWriter::COutputProperties::MethodKindBit | XmlWriter::COutputProperties::MethodNameBit},
    {u"version", XmlWriter::COutputProperties::VersionBit},
    {u"encoding", XmlWriter::COutputProperties::EncodingBit},
    {u"omit-xml-declaration", XmlWriter::COutputProperties::OmitXmlDeclarationBit},
    {u"standalone", XmlWriter::COutputProperties::StandaloneBit},
    {u"doctype-public", XmlWriter::COutputProperties::DoctypePublicBit},
    {u"doctype-system", XmlWriter::COutputProperties::DoctypeSystemBit},
    {u"indent", XmlWriter::COutputProperties::IndentBit},
    {u"media-type", XmlWriter::COutputProperties::MediaTypeBit},
};
const int kOutputAttributeCount = sizeof(s_aOutputAttributes) / sizeof(s_aOutputAttributes[0]);

// Copies the properties of `bits` from one set of output properties to another.
void CopyOutputProperty(const XmlWriter::COutputProperties& from, XmlWriter::COutputProperties& to, unsigned int bits) {
    DomString text;
    DomString text2;
    bool flag;
    int kind;
    if (from.GetMethodKind(kind) && (bits & XmlWriter::COutputProperties::MethodKindBit)) to.SetMethodKind(kind);
    if ((bits & XmlWriter::COutputProperties::MethodNameBit) && from.GetMethodName(text, text2)) to.SetMethodName(text, text2);
    if ((bits & XmlWriter::COutputProperties::VersionBit) && from.GetVersion(text)) to.SetVersion(text);
    if ((bits & XmlWriter::COutputProperties::EncodingBit) && from.GetEncoding(text)) to.SetEncoding(text);
    if ((bits & XmlWriter::COutputProperties::OmitXmlDeclarationBit) && from.GetOmitXmlDeclaration(flag)) to.SetOmitXmlDeclaration(flag);
    if ((bits & XmlWriter::COutputProperties::StandaloneBit) && from.GetStandalone(flag)) to.SetStandalone(flag);
    if ((bits & XmlWriter::COutputProperties::DoctypePublicBit) && from.GetDoctypePublic(text)) to.SetDoctypePublic(text);
    if ((bits & XmlWriter::COutputProperties::DoctypeSystemBit) && from.GetDoctypeSystem(text)) to.SetDoctypeSystem(text);
    if ((bits & XmlWriter::COutputProperties::IndentBit) && from.GetIndent(flag)) to.SetIndent(flag);
    if ((bits & XmlWriter::COutputProperties::MediaTypeBit) && from.GetMediaType(text)) to.SetMediaType(text);
}

}  // namespace

CRuntime::CRuntime(CStylesheetModule* root, Xslt::CEnvironment* environment, CLocator* locator)
    : m_pRootModule(root),
      m_pEnvironment(environment),
      m_pLocator(locator),
      m_pReporter(environment->GetDiagnosticReporter()),
      m_pOutputProperties(new XmlWriter::COutputProperties()),
      m_pRunParameters(new CBoundParameters()),
      m_pFunctions(new Xpath::CCoreFunctionLibrary()),
      m_pNodeOrder(new CKeyTable()),
      m_pExtensionTypes(new Xpath::CDefaultExtensionTypes()),
      m_pEmptyNamespaces(new CNamespaceContext(nullptr)),
      m_pDocuments(new CDocumentTable(environment, locator)) {
    m_pGlobalFrame = new CVariableFrame(this);
    AddDocumentFunctions(m_pFunctions, this);
    AddXsltFunctions(m_pFunctions, this);
}

CRuntime::~CRuntime() {
    for (CInstruction* instruction : m_aCachingInstructions) instruction->m_pXpathContext = nullptr;
    m_pGlobalFrame->Reset();
    for (CVariableFrame* frame : m_aSpareFrames) frame->Reset();
    GetKeyTable()->Clear();
}

void CRuntime::TakeFrame(TRefPtr<CVariableFrame>& frame) {
    if (m_aSpareFrames.IsEmpty()) {
        frame = new CVariableFrame(this);
        return;
    }
    frame = std::move(m_aSpareFrames.Last());
    m_aSpareFrames.RemoveLast();
}

void CRuntime::GiveBackFrame(CVariableFrame* frame) {
    frame->PopTo(0);
    m_aSpareFrames.Add(frame);
}

void CRuntime::TakeParameters(TRefPtr<CBoundParameters>& parameters) {
    if (m_aSpareParameters.IsEmpty()) {
        parameters = new CBoundParameters();
        return;
    }
    parameters = std::move(m_aSpareParameters.Last());
    m_aSpareParameters.RemoveLast();
}

void CRuntime::GiveBackParameters(CBoundParameters* parameters) {
    parameters->Clear();
    m_aSpareParameters.Add(parameters);
}

template <class F>
void CRuntime::Walk(CStylesheetModule* module, F&& visit) {
    visit(module);
    for (int i = module->m_aImports.GetSize() - 1; i >= 0; --i) Walk(module->m_aImports[i], visit);
}

void CRuntime::BindParameters(CExecutionContext& context, const Xslt::CParameterList* parameters) {
    if (!parameters) return;
    CNamespaceContext namespaces(m_pRootModule->GetRootElement());
    m_aRunParameterNames.SetSize(parameters->GetCount());
    for (int i = 0; i < parameters->GetCount(); ++i) {
        const Xslt::CParameterList::SParameter& parameter = parameters->Get(i);
        SQName& name = m_aRunParameterNames[i];
        if (parameters->IsUnresolved(i)) {
            DomStringView prefix;
            DomStringView localName;
            SplitQName(parameter.sName, prefix, localName);
            if (!prefix.empty() && !namespaces.Lookup(prefix, name.sUri)) {
                context.RaiseFatal(CXsltException::UndefinedPrefix, DomString(prefix));
            }
            name.sLocalName.assign(localName);
        } else {
            name = SQName{parameter.sNamespaceUri, parameter.sLocalName};
        }
        m_pRunParameters->Add(&name, parameter.pValue);
    }
}

void CRuntime::BuildTables(CExecutionContext& context) {
    m_pOutermost = &context;
    BuildNamedTemplates(context);
    BuildAliases(context);
    BuildAttributeSets();
    BuildDecimalFormats(context);
    BuildOutput(context);
    BuildGlobals(context);
    BuildKeys();
}

void CRuntime::BuildKeys() {
    Walk(m_pRootModule, [&](CStylesheetModule* module) {
        for (CKeyDeclaration* key : module->m_aKeys) GetKeyTable()->AddKey(key);
    });
}

void CRuntime::BuildNamedTemplates(CExecutionContext& context) {
    Walk(m_pRootModule, [&](CStylesheetModule* module) {
        int mark = m_aNamedTemplates.GetSize();
        for (int i = module->m_aTemplates.GetSize() - 1; i >= 0; --i) {
            CTemplate* rule = module->m_aTemplates[i];
            if (!rule->HasName()) continue;
            const SQName& name = rule->GetTemplateName();
            for (int j = 0; j < m_aNamedTemplates.GetSize(); ++j) {
                if (!(m_aNamedTemplates[j].name == name)) continue;
                if (j < mark) goto next;
                CExecutionContext at(context, rule, false);
                at.RaiseFatal(CXsltException::DuplicateTemplateName, name.sUri, name.sLocalName);
            }
            m_aNamedTemplates.Add(SNamedTemplate{name, rule});
        next:;
        }
    });
}

void CRuntime::BuildAliases(CExecutionContext& context) {
    Walk(m_pRootModule, [&](CStylesheetModule* module) {
        int mark = m_aAliases.GetSize();
        for (int i = module->m_aNamespaceAliases.GetSize() - 1; i >= 0; --i) {
            CNamespaceAliasDeclaration* alias = module->m_aNamespaceAliases[i];
            bool known = false;
            for (int j = 0; j < m_aAliases.GetSize() && !known; ++j) {
                if (m_aAliases[j].sStylesheetUri != alias->m_sStylesheetUri) continue;
                if (j >= mark) {
                    CExecutionContext at(context, alias, false);
                    at.RaiseFatal(CXsltException::DuplicateNamespaceAlias, alias->m_sStylesheetUri);
                }
                known = true;
            }
            if (!known) m_aAliases.Add(SAlias{alias->m_sStylesheetUri, alias->m_sResultUri, alias->m_sResultPrefix});
        }
    });
}

void CRuntime::BuildAttributeSets() {
    int ordinal = 0;
    Walk(m_pRootModule, [&](CStylesheetModule* module) {
        for (int i = module->m_aAttributeSets.GetSize() - 1; i >= 0; --i) {
            CAttributeSetDeclaration* declaration = module->m_aAttributeSets[i];
            CMergedAttributeSet* set = FindAttributeSet(declaration->m_name.sUri, declaration->m_name.sLocalName);
            if (!set) {
                set = new CMergedAttributeSet();
                set->m_name = declaration->m_name;
                m_aAttributeSets.Add(set);
            }
            for (const SQName& used : declaration->m_aUsedSets) set->m_aUsedSets.Add(used);
            for (const TRefPtr<CInstruction>& attribute : declaration->m_aAttributes) {
                set->m_aAttributes.Add(CMergedAttributeSet::SAttribute{attribute, ordinal});
            }
            ++ordinal;
        }
    });
}

void CRuntime::BuildDecimalFormats(CExecutionContext& context) {
    Walk(m_pRootModule, [&](CStylesheetModule* module) {
        for (CDecimalFormatDeclaration* format : module->m_aDecimalFormats) {
            CDecimalFormatDeclaration* known = FindDecimalFormat(format->m_name.sUri, format->m_name.sLocalName);
            if (!known) {
                m_aDecimalFormats.Add(format);
            } else if (!known->HasSameProperties(*format)) {
                CExecutionContext at(context, format, false);
                DomString uri = format->m_bHasName ? format->m_name.sUri : DomString(u"#default");
                DomString localName = format->m_bHasName ? format->m_name.sLocalName : DomString(u"default");
                at.RaiseFatal(CXsltException::DuplicateDecimalFormatName, uri, localName);
            }
        }
    });
}

void CRuntime::BuildOutput(CExecutionContext& context) {
    int states[kOutputAttributeCount];
    Walk(m_pRootModule, [&](CStylesheetModule* module) {
        for (int a = 0; a < kOutputAttributeCount; ++a) {
            states[a] = (m_pOutputProperties->GetMask() & s_aOutputAttributes[a].nBits) ? -1 : 0;
        }
        for (int i = module->m_aOutputs.GetSize() - 1; i >= 0; --i) MergeOutput(context, module->m_aOutputs[i], states);
    });
}

void CRuntime::MergeOutput(CExecutionContext& context, COutputDeclaration* declaration, int* states) {
    const XmlWriter::COutputProperties& given = *declaration->m_pProperties;
    for (int a = 0; a < kOutputAttributeCount; ++a) {
        if (!(given.GetMask() & s_aOutputAttributes[a].nBits)) continue;
        if (states[a] == 0) {
            CopyOutputProperty(given, *m_pOutputProperties, s_aOutputAttributes[a].nBits);
            states[a] = 1;
        } else if (states[a] == 1) {
            CExecutionContext at(context, declaration, false);
            at.RaiseRecoverable(CXsltException::DuplicateOutputAttribute, s_aOutputAttributes[a].pName);
            at.Leave();
        }
    }
    for (const SQName& name : declaration->m_aCDataSectionElements) {
        m_pOutputProperties->AddCDataSectionElement(name.sUri, name.sLocalName);
    }
}

void CRuntime::BuildGlobals(CExecutionContext& context) {
    Walk(m_pRootModule, [&](CStylesheetModule* module) {
        int mark = m_aGlobals.GetSize();
        for (CVariableInstruction* parameter : module->m_aParameters) AddGlobal(context, parameter, mark);
        for (CVariableInstruction* variable : module->m_aVariables) AddGlobal(context, variable, mark);
    });
}

void CRuntime::AddGlobal(CExecutionContext& context, CVariableInstruction* declaration, int mark) {
    const SQName& name = declaration->GetVariableName();
    for (int i = 0; i < m_aGlobals.GetSize(); ++i) {
        if (!(m_aGlobals[i].name == name)) continue;
        if (i < mark) return;
        CExecutionContext at(context, declaration, false);
        at.RaiseFatal(CXsltException::DuplicateVariableName, name.sUri, name.sLocalName);
    }
    Xpath::CValue* value = nullptr;
    if (declaration->GetKind() == CVariableInstruction::Parameter) value = m_pRunParameters->Find(name.sUri, name.sLocalName);
    m_aGlobals.Add(SGlobal{name, declaration, value, false});
}

void CRuntime::EvaluateGlobals(CExecutionContext& outermost) {
    m_pOutermost = &outermost;
    for (int i = 0; i < m_aGlobals.GetSize(); ++i) EvaluateGlobal(m_aGlobals[i]);
}

void CRuntime::EvaluateGlobal(SGlobal& global) {
    if (global.pValue) return;
    CExecutionContext context(*m_pOutermost, global.pDeclaration, m_pGlobalFrame);
    if (global.bInEvaluation) {
        context.RaiseFatal(CXsltException::CircularVariableDefinitions, global.name.sUri, global.name.sLocalName);
    }
    global.bInEvaluation = true;
    TRefPtr<Xpath::CValue> value;
    global.pDeclaration->ComputeValue(context, value);
    global.bInEvaluation = false;
    global.pValue = value;
    context.Leave();
}

bool CRuntime::GetGlobalValue(DomStringView uri, DomStringView localName, TRefPtr<Xpath::CValue>& value) {
    for (int i = 0; i < m_aGlobals.GetSize(); ++i) {
        SGlobal& global = m_aGlobals[i];
        if (!global.name.Equals(uri, localName)) continue;
        EvaluateGlobal(global);
        value = global.pValue;
        return true;
    }
    return false;
}

CTemplate* CRuntime::FindNamedTemplate(DomStringView uri, DomStringView localName) const {
    for (const SNamedTemplate& entry : m_aNamedTemplates) {
        if (entry.name.Equals(uri, localName)) return entry.pTemplate;
    }
    return nullptr;
}

CMergedAttributeSet* CRuntime::FindAttributeSet(DomStringView uri, DomStringView localName) const {
    for (CMergedAttributeSet* set : m_aAttributeSets) {
        if (set->m_name.Equals(uri, localName)) return set;
    }
    return nullptr;
}

bool CRuntime::FindAlias(DomStringView stylesheetUri, const DomString*& resultUri, const DomString*& resultPrefix) const {
    for (const SAlias& alias : m_aAliases) {
        if (alias.sStylesheetUri == stylesheetUri) {
            resultUri = &alias.sResultUri;
            resultPrefix = &alias.sResultPrefix;
            return true;
        }
    }
    return false;
}

CDecimalFormatDeclaration* CRuntime::FindDecimalFormat(DomStringView uri, DomStringView localName) const {
    for (CDecimalFormatDeclaration* format : m_aDecimalFormats) {
        if (format->m_name.Equals(uri, localName)) return format;
    }
    return nullptr;
}

}  // namespace XsltPrivate
