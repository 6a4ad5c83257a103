// Services of the engine, made on first use.
#include "xslt/Environment.h"

namespace Xslt {

CEnvironment::CEnvironment() : m_pExtensionRegistry(new CExtensionRegistry()) {}

CExtensionRegistry* CEnvironment::GetExtensionRegistry() { return m_pExtensionRegistry; }

Core::CEncodingTable* CEnvironment::GetEncodingTable() {
    if (!m_pEncodingTable) m_pEncodingTable = new Core::CEncodingTable();
    return m_pEncodingTable;
}

}  // namespace Xslt
