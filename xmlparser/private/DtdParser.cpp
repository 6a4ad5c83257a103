// Declarations of the internal subset. Nothing is validated: content models are checked for
// syntax and dropped, and nothing external is fetched.
#include "xmlparser/private/DtdParser.h"

#include "core/Array.h"
#include "xmlparser/ParseException.h"

namespace XmlParserPrivate {

namespace {

using Code = Sxp::CParseException;

const char16_t* const s_apTypeNames[] = {u"CDATA",  u"ID",      u"IDREF",   u"IDREFS",  u"ENTITY",
                                         u"ENTITIES", u"NMTOKEN", u"NMTOKENS", u"NOTATION"};
const char16_t* const s_apDefaultNames[] = {u"#REQUIRED", u"#IMPLIED", u"#FIXED", u""};

bool IsNameLike(int token) {
    return token == TokenName || token == TokenNameOptional || token == TokenNameStar || token == TokenNamePlus;
}

bool IsGroupClose(int token) {
    return token == TokenCloseParen || token == TokenCloseOptional || token == TokenCloseStar ||
           token == TokenClosePlus;
}

}  // namespace

void CDtdParser::RequireSpace() {
    if (Token() != TokenSpaces) m_pScanner->Fail(Code::MissingSpace);
    Next();
}

void CDtdParser::SkipSpace() {
    if (Token() == TokenSpaces) Next();
}

void CDtdParser::RequireName(DomString& name, int code) {
    if (Token() != TokenName) m_pScanner->Fail(code);
    name = m_pScanner->GetTokenText();
    Next();
}

void CDtdParser::RequireClose() {
    SkipSpace();
    if (Token() != TokenDeclClose) m_pScanner->Fail(Code::MissingDeclarationClose);
    Next();
}

void CDtdParser::ParseDocumentType() {
    auto dtd = std::make_unique<CDtd>();
    m_pScanner->SetInDeclaration(true);
    Next();
    RequireSpace();
    RequireName(dtd->m_sRootName, Code::MissingName);
    SkipSpace();
    if (Token() != TokenOpenBracket && Token() != TokenDeclClose) {
        ReadExternalId(dtd->m_sPublicId, dtd->m_bHasPublicId, dtd->m_sSystemId, dtd->m_bHasSystemId, false);
        dtd->m_bHasExternal = true;
        SkipSpace();
    }
    m_pDtd = dtd.get();
    m_pScanner->SetDtd(std::move(dtd));
    if (Token() == TokenOpenBracket) {
        Next();
        ParseSubset();
        if (Token() != TokenCloseBracket) m_pScanner->Fail(Code::MissingDeclarationClose);
        Next();
    }
    SkipSpace();
    if (Token() != TokenDeclClose) m_pScanner->Fail(Code::MissingDeclarationClose);
    m_pScanner->SetInDeclaration(false);
    Next();
}

// Declarations up to the first token that is none of them.
void CDtdParser::ParseSubset() {
    for (;;) {
        switch (Token()) {
        case TokenSpaces:
        case TokenParameterRef:
            Next();
            break;
        case TokenComment:
            m_pScanner->ReadComment();
            Next();
            break;
        case TokenPi:
            m_pScanner->ReadProcessingInstruction();
            Next();
            break;
        case TokenMarkupDecl: {
            DomStringView keyword = m_pScanner->GetTokenText();
            if (keyword == u"ELEMENT") {
                ParseElementDecl();
            } else if (keyword == u"ATTLIST") {
                ParseAttlistDecl();
            } else if (keyword == u"ENTITY") {
                ParseEntityDecl();
            } else if (keyword == u"NOTATION") {
                ParseNotationDecl();
            } else {
                m_pScanner->Fail(Code::BadMarkupDeclaration);
            }
            break;
        }
        default:
            return;
        }
    }
}

// ---- ELEMENT ----

void CDtdParser::ParseElementDecl() {
    DomString name;
    Next();
    RequireSpace();
    RequireName(name, Code::MissingName);
    RequireSpace();
    ParseContentSpec();
    RequireClose();
}

void CDtdParser::ParseContentSpec() {
    if (Token() == TokenName) {
        DomStringView keyword = m_pScanner->GetTokenText();
        if (keyword != u"EMPTY" && keyword != u"ANY") m_pScanner->Fail(Code::BadContentSpecification);
        Next();
        return;
    }
    if (Token() != TokenOpenParen) m_pScanner->Fail(Code::BadContentSpecification);
    Next();
    SkipSpace();
    if (Token() == TokenHashName) {
        if (m_pScanner->GetTokenText() != u"PCDATA") m_pScanner->Fail(Code::BadContentSpecification);
        ParseMixedContent();
    } else {
        ParseChildren();
    }
}

// "(#PCDATA" has been read: names separated by "|", and ")*" if there are any.
void CDtdParser::ParseMixedContent() {
    bool names = false;
    Next();
    for (SkipSpace();; SkipSpace()) {
        if (Token() == TokenCloseStar || (Token() == TokenCloseParen && !names)) break;
        if (Token() != TokenBar) m_pScanner->Fail(Code::BadContentSpecification);
        Next();
        SkipSpace();
        if (Token() != TokenName) m_pScanner->Fail(Code::BadContentSpecification);
        names = true;
        Next();
    }
    Next();
}

// A group of names and nested groups, each group with one kind of separator. Nesting is kept on
// an explicit stack, so a hostile depth of parentheses costs no recursion.
void CDtdParser::ParseChildren() {
    TArray<int> separators;  // per open group: 0 until its first separator is seen
    separators.Add(0);
    bool expectItem = true;
    for (;;) {
        int token = Token();
        if (expectItem && IsNameLike(token)) {
            expectItem = false;
        } else if (expectItem && token == TokenOpenParen) {
            separators.Add(0);
        } else if (!expectItem && (token == TokenBar || token == TokenComma)) {
            if (separators.Last() == 0) separators.Last() = token;
            if (separators.Last() != token) m_pScanner->Fail(Code::BadContentSpecification);
            expectItem = true;
        } else if (!expectItem && IsGroupClose(token)) {
            separators.RemoveLast();
            if (separators.IsEmpty()) {
                Next();
                return;
            }
        } else {
            m_pScanner->Fail(Code::BadContentSpecification);
        }
        Next();
        SkipSpace();
    }
}

// ---- ATTLIST ----

void CDtdParser::ParseAttlistDecl() {
    DomString element;
    Next();
    RequireSpace();
    RequireName(element, Code::MissingName);
    CElementDecl* decl = m_pDtd->AddElementDecl(element);
    SkipSpace();
    while (Token() == TokenName) {
        CAttributeDecl attribute;
        attribute.m_sName = m_pScanner->GetTokenText();
        Next();
        RequireSpace();
        ParseAttributeType(attribute);
        RequireSpace();
        ParseDefault(attribute);
        ReportAttribute(element, attribute);
        decl->m_aAttributes.push_back(std::move(attribute));
        SkipSpace();
    }
    RequireClose();
}

void CDtdParser::ParseAttributeType(CAttributeDecl& attribute) {
    if (Token() == TokenOpenParen) {
        attribute.m_nType = CAttributeDecl::TypeEnumeration;
        ParseEnumeration(attribute, false);
        return;
    }
    if (Token() != TokenName) m_pScanner->Fail(Code::BadAttributeType);
    DomStringView keyword = m_pScanner->GetTokenText();
    int type = 0;
    while (type <= CAttributeDecl::TypeNotation && keyword != s_apTypeNames[type]) ++type;
    if (type > CAttributeDecl::TypeNotation) m_pScanner->Fail(Code::BadAttributeType);
    attribute.m_nType = type;
    Next();
    if (type != CAttributeDecl::TypeNotation) return;
    RequireSpace();
    if (Token() != TokenOpenParen) m_pScanner->Fail(Code::BadAttributeType);
    ParseEnumeration(attribute, true);
}

// At "(": values separated by "|" up to ")"; names only for NOTATION, else name tokens.
void CDtdParser::ParseEnumeration(CAttributeDecl& attribute, bool namesOnly) {
    for (;;) {
        Next();
        SkipSpace();
        if (Token() != TokenName && (namesOnly || Token() != TokenNameToken)) {
            m_pScanner->Fail(Code::BadAttributeType);
        }
        attribute.m_aValues.emplace_back(m_pScanner->GetTokenText());
        Next();
        SkipSpace();
        if (Token() == TokenCloseParen) break;
        if (Token() != TokenBar) m_pScanner->Fail(Code::BadAttributeType);
    }
    Next();
}

void CDtdParser::ParseDefault(CAttributeDecl& attribute) {
    if (Token() == TokenHashName) {
        DomStringView keyword = m_pScanner->GetTokenText();
        if (keyword == u"REQUIRED") {
            attribute.m_nDefaultKind = CAttributeDecl::DefaultRequired;
        } else if (keyword == u"IMPLIED") {
            attribute.m_nDefaultKind = CAttributeDecl::DefaultImplied;
        } else if (keyword == u"FIXED") {
            attribute.m_nDefaultKind = CAttributeDecl::DefaultFixed;
        } else {
            m_pScanner->Fail(Code::BadDefaultDeclaration);
        }
        Next();
        if (attribute.m_nDefaultKind != CAttributeDecl::DefaultFixed) return;
        RequireSpace();
    } else {
        attribute.m_nDefaultKind = CAttributeDecl::DefaultPlain;
    }
    if (Token() != TokenLiteral) m_pScanner->Fail(Code::BadDefaultDeclaration);
    m_pScanner->ReadAttributeValue(attribute.m_sDefault);
    Next();
}

// The type goes out as its keyword; enumerations as "(a|b)", behind "NOTATION " for notations.
void CDtdParser::ReportAttribute(const DomString& element, const CAttributeDecl& attribute) {
    if (!m_pDtdHandler) return;
    DomString type;
    if (attribute.m_nType == CAttributeDecl::TypeNotation) type = u"NOTATION ";
    if (attribute.m_nType >= CAttributeDecl::TypeNotation) {
        type += u'(';
        for (size_t i = 0; i < attribute.m_aValues.size(); ++i) {
            if (i > 0) type += u'|';
            type += attribute.m_aValues[i];
        }
        type += u')';
    } else {
        type = s_apTypeNames[attribute.m_nType];
    }
    m_pDtdHandler->AttributeDecl(element, attribute.m_sName, type, s_apDefaultNames[attribute.m_nDefaultKind],
                                 attribute.m_sDefault);
}

// ---- ENTITY and NOTATION ----

void CDtdParser::ParseEntityDecl() {
    auto entity = std::make_unique<CEntity>();
    bool parameter = false;
    Next();
    RequireSpace();
    if (Token() == TokenLoneReference) {
        parameter = true;
        Next();
        RequireSpace();
    }
    RequireName(entity->m_sName, Code::MissingName);
    RequireSpace();
    if (Token() == TokenLiteral) {
        m_pScanner->ReadEntityValue(entity->m_sText);
        Next();
    } else {
        ReadExternalId(entity->m_sPublicId, entity->m_bHasPublicId, entity->m_sSystemId, entity->m_bHasSystemId,
                       false);
        entity->m_bExternal = true;
        SkipSpace();
        if (!parameter && Token() == TokenName) {
            if (m_pScanner->GetTokenText() != u"NDATA") m_pScanner->Fail(Code::BadEntityDeclaration);
            Next();
            RequireSpace();
            RequireName(entity->m_sNotation, Code::MissingName);
            entity->m_bUnparsed = true;
        }
    }
    RequireClose();
    if (parameter) {
        m_pDtd->AddParameterEntity(std::move(entity));
        return;
    }
    const CEntity& declared = *entity;
    bool counts = m_pDtd->AddGeneralEntity(std::move(entity));
    if (counts && declared.m_bUnparsed && m_pDtdHandler) {
        m_pDtdHandler->UnparsedEntityDecl(declared.m_sName, declared.m_sPublicId, declared.m_sSystemId,
                                          declared.m_sNotation);
    }
}

void CDtdParser::ParseNotationDecl() {
    CNotation notation;
    bool hasPublicId = false, hasSystemId = false;
    Next();
    RequireSpace();
    RequireName(notation.m_sName, Code::MissingName);
    RequireSpace();
    ReadExternalId(notation.m_sPublicId, hasPublicId, notation.m_sSystemId, hasSystemId, true);
    RequireClose();
    if (m_pDtdHandler) m_pDtdHandler->NotationDecl(notation.m_sName, notation.m_sPublicId, notation.m_sSystemId);
    m_pDtd->AddNotation(std::move(notation));
}

// "SYSTEM" and a literal, or "PUBLIC", a public identifier and, unless `systemOptional`, a
// system literal. Leaves the token behind the last literal, or behind the spaces after the
// public identifier, current.
void CDtdParser::ReadExternalId(DomString& publicId, bool& hasPublicId, DomString& systemId, bool& hasSystemId,
                                bool systemOptional) {
    if (Token() != TokenName) m_pScanner->Fail(Code::BadExternalIdentifier);
    bool isPublic = m_pScanner->GetTokenText() == u"PUBLIC";
    if (!isPublic && m_pScanner->GetTokenText() != u"SYSTEM") m_pScanner->Fail(Code::BadExternalIdentifier);
    Next();
    RequireSpace();
    if (Token() != TokenLiteral) m_pScanner->Fail(Code::BadExternalIdentifier);
    if (isPublic) {
        m_pScanner->ReadPublicLiteral(publicId);
        hasPublicId = true;
        if (Next() == TokenSpaces && Next() == TokenLiteral) {
            m_pScanner->ReadSystemLiteral(systemId);
            hasSystemId = true;
            Next();
        }
        if (!hasSystemId && !systemOptional) m_pScanner->Fail(Code::BadExternalIdentifier);
        return;
    }
    m_pScanner->ReadSystemLiteral(systemId);
    hasSystemId = true;
    Next();
}

}  // namespace XmlParserPrivate
