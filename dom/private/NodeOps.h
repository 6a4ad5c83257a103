// The static operation tables of the node kinds, which each document's classes point to.
#pragma once
#include "dom/Node.h"

namespace Dom {

extern const CNodeOps g_oElementOps;
extern const CNodeOps g_oAttributeOps;
extern const CNodeOps g_oTextOps;
extern const CNodeOps g_oCommentOps;
extern const CNodeOps g_oProcessingInstructionOps;
extern const CNodeOps g_oNamespaceOps;
extern const CNodeOps g_oDocumentOps;
extern const CNodeOps g_oFragmentOps;

}  // namespace Dom
