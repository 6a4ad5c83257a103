// File names to "file" URIs and back, and the %-escaping of URI text through UTF-8.
// Each function reports by its result and throws nothing.
#pragma once
#include "core/DomString.h"

namespace Uri {

// Makes the name absolute against the current directory (lexically; the file need not exist) and
// gives "file://localhost" followed by the escaped absolute path.
bool FileNameToUri(DomStringView fileName, DomString& uri);
// Accepts exactly the prefixes "file://localhost/" and "file:///" and gives the unescaped absolute path.
bool UriToFileName(DomStringView uri, DomString& fileName);
// UTF-8 bytes outside the URI character classes become "%" and two upper-case hex digits.
bool Escape(DomStringView text, DomString& escaped);
// "%" and two hex digits become a byte; the bytes are then read as UTF-8. False for a bad "%"
// or a unit of 0x80 and above.
bool Unescape(DomStringView escaped, DomString& text);

}  // namespace Uri
