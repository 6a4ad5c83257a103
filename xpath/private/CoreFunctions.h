// The classes of the core function library, one per function, registered in table order.
#pragma once

namespace Xpath {
class CCoreFunctionLibrary;
}

namespace XpathPrivate {

// Appends the 27 core functions to `library` in the order of the core table.
void AddCoreFunctions(Xpath::CCoreFunctionLibrary& library);

}  // namespace XpathPrivate
