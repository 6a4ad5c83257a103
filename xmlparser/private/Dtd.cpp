// Declarations of the internal subset and their lookup.
#include "xmlparser/private/Dtd.h"

namespace XmlParserPrivate {

bool CDtd::Add(std::vector<std::unique_ptr<CEntity>>& entities, CNameIndex& index, std::unique_ptr<CEntity> entity) {
    bool first = index.Add(entity->m_sName, static_cast<int>(entities.size()));
    entities.push_back(std::move(entity));
    return first;
}

bool CDtd::AddGeneralEntity(std::unique_ptr<CEntity> entity) {
    return Add(m_aGeneralEntities, m_aGeneralIndex, std::move(entity));
}

bool CDtd::AddParameterEntity(std::unique_ptr<CEntity> entity) {
    return Add(m_aParameterEntities, m_aParameterIndex, std::move(entity));
}

const CEntity* CDtd::FindGeneralEntity(DomStringView name) const {
    int index = m_aGeneralIndex.Find(name);
    return index < 0 ? nullptr : m_aGeneralEntities[index].get();
}

const CEntity* CDtd::FindParameterEntity(DomStringView name) const {
    int index = m_aParameterIndex.Find(name);
    return index < 0 ? nullptr : m_aParameterEntities[index].get();
}

CElementDecl* CDtd::AddElementDecl(DomStringView name) {
    auto decl = std::make_unique<CElementDecl>();
    decl->m_sName = DomString(name);
    m_aElementIndex.Add(name, static_cast<int>(m_aElements.size()));
    m_aElements.push_back(std::move(decl));
    return m_aElements.back().get();
}

const CElementDecl* CDtd::FindElementDecl(DomStringView name) const {
    int index = m_aElementIndex.Find(name);
    return index < 0 ? nullptr : m_aElements[index].get();
}

}  // namespace XmlParserPrivate
