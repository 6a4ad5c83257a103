// The console of the driver: every text the program prints for the user goes to standard error
// as UTF-8; standard output stays free for the script function "print".
#pragma once
#include "core/DomString.h"

namespace Console {

void Print(DomStringView text);
// Prints the format with "%s" replaced by the argument.
void Print(const DomChar* format, DomStringView argument);

}  // namespace Console
