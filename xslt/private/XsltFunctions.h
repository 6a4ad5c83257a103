// The XSLT functions that need no table of the run, entered into the run's core function
// library: current, generate-id, system-property, element-available, function-available and
// unparsed-entity-uri (document, key and format-number stand beside them in FunctionLibrary.h).
// Each finds the running instruction
// through the runtime's active execution context, which raises its errors (47 for a wrong
// number of arguments, 48 for a wrong argument type) with the instruction's location.
#pragma once
#include "xpath/CoreFunctionLibrary.h"

namespace XsltPrivate {

class CRuntime;

void AddXsltFunctions(Xpath::CCoreFunctionLibrary* library, CRuntime* runtime);

}  // namespace XsltPrivate
