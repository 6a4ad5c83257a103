// The exception root, the "%s" formatter and the message-table lookup that every exception
// class uses. Exceptions are created with new, thrown by pointer and deleted by their catcher.
#pragma once
#include "core/DomString.h"

namespace Core {

class IException {
public:
    virtual ~IException() = default;
    virtual void GetMessage(DomString& text) const;
};

// Replaces each "%s" by the next argument; an argument that is null, or a fourth "%s",
// gives "?" without moving on. Every other unit, a lone "%" included, is copied.
void FormatMessage(DomString& text, const DomChar* format, const DomChar* argument1 = nullptr,
                   const DomChar* argument2 = nullptr, const DomChar* argument3 = nullptr);

// One row of an exception class's message table. A table ends in the row with code -1.
struct SMessage {
    int nCode;
    const DomChar* pFormat;
};

// Finds the row for `code` (or the closing "Unclassified ..." row) and renders it with
// the two text arguments; absent arguments are empty texts, not null.
void FormatTableMessage(DomString& text, const SMessage* table, int code, const DomString& argument1,
                        const DomString& argument2);

// Returns the format of the row for `code`, or of the closing row.
const DomChar* FindMessageFormat(const SMessage* table, int code);

}  // namespace Core
