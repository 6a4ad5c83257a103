// The node-set value, which holds its set counted.
#include "xpath/Value.h"

#include "xpath/NodeSet.h"

namespace Xpath {

CNodeSetValue::CNodeSetValue(CNodeSet* nodeSet) : m_pNodeSet(nodeSet) {}
CNodeSetValue::~CNodeSetValue() = default;
CNodeSet* CNodeSetValue::GetNodeSet() const { return m_pNodeSet; }

}  // namespace Xpath
