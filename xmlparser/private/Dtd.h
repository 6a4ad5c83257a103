// What the internal subset declared: entities, attribute lists and notations. Lookups find the
// first declaration of a name; later ones are kept but have no effect.
#pragma once
#include <memory>
#include <unordered_map>
#include <vector>

#include "core/Hash.h"

namespace XmlParserPrivate {

class CEntity {
public:
    DomString m_sName;
    DomString m_sPublicId;
    bool m_bHasPublicId = false;
    DomString m_sSystemId;
    bool m_bHasSystemId = false;
    DomString m_sNotation;
    DomString m_sText;         // the replacement text of an internal entity
    bool m_bExternal = false;  // no value of its own
    bool m_bUnparsed = false;  // a notation is named
};

class CAttributeDecl {
public:
    enum EType : int {
        TypeCData, TypeId, TypeIdRef, TypeIdRefs, TypeEntity, TypeEntities, TypeNmToken, TypeNmTokens,
        TypeNotation, TypeEnumeration
    };
    enum EDefaultKind : int { DefaultRequired, DefaultImplied, DefaultFixed, DefaultPlain };

    DomString m_sName;
    int m_nType = TypeCData;
    std::vector<DomString> m_aValues;  // for NOTATION and enumerations, in order
    int m_nDefaultKind = DefaultImplied;
    DomString m_sDefault;
};

class CElementDecl {
public:
    DomString m_sName;
    std::vector<CAttributeDecl> m_aAttributes;  // in order of declaration
};

class CNotation {
public:
    DomString m_sName;
    DomString m_sPublicId;
    DomString m_sSystemId;
};

// Names to the index of their first declaration, hashed by the program's one text hash.
class CNameIndex {
public:
    int Find(DomStringView name) const {
        auto found = m_aIndex.find(name);
        return found == m_aIndex.end() ? -1 : found->second;
    }
    // Returns false, and keeps the earlier index, if the name is already there.
    bool Add(DomStringView name, int index) { return m_aIndex.emplace(DomString(name), index).second; }

private:
    struct SHash {
        using is_transparent = void;
        size_t operator()(DomStringView text) const { return Core::HashText(text); }
    };
    std::unordered_map<DomString, int, SHash, std::equal_to<>> m_aIndex;
};

class CDtd {
public:
    DomString m_sRootName;
    DomString m_sPublicId;
    bool m_bHasPublicId = false;
    DomString m_sSystemId;
    bool m_bHasSystemId = false;
    bool m_bHasExternal = false;

    // Each returns true if this is the first declaration of the name, the one that counts.
    bool AddGeneralEntity(std::unique_ptr<CEntity> entity);
    bool AddParameterEntity(std::unique_ptr<CEntity> entity);
    const CEntity* FindGeneralEntity(DomStringView name) const;
    const CEntity* FindParameterEntity(DomStringView name) const;

    // Every attribute list makes a declaration of its own; lookups find the first.
    CElementDecl* AddElementDecl(DomStringView name);
    const CElementDecl* FindElementDecl(DomStringView name) const;

    void AddNotation(CNotation notation) { m_aNotations.push_back(std::move(notation)); }

private:
    static bool Add(std::vector<std::unique_ptr<CEntity>>& entities, CNameIndex& index,
                    std::unique_ptr<CEntity> entity);

    std::vector<CNotation> m_aNotations;
    std::vector<std::unique_ptr<CElementDecl>> m_aElements;
    std::vector<std::unique_ptr<CEntity>> m_aGeneralEntities;
    std::vector<std::unique_ptr<CEntity>> m_aParameterEntities;
    CNameIndex m_aElementIndex;
    CNameIndex m_aGeneralIndex;
    CNameIndex m_aParameterIndex;
};

}  // namespace XmlParserPrivate
