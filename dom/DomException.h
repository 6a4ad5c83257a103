// The one exception of the tree: a code and its fixed message. Changing the tree raises
// code 7, asking for what the tree does not support raises code 9.
#pragma once
#include "core/Exception.h"

namespace Dom {

class CDomException : public Core::IException {
public:
    enum {
        INDEX_SIZE_ERR = 1,
        DOMSTRING_SIZE_ERR = 2,
        HIERARCHY_REQUEST_ERR = 3,
        WRONG_DOCUMENT_ERR = 4,
        INVALID_CHARACTER_ERR = 5,
        NO_DATA_ALLOWED_ERR = 6,
        NO_MODIFICATION_ALLOWED_ERR = 7,
        NOT_FOUND_ERR = 8,
        NOT_SUPPORTED_ERR = 9,
        INUSE_ATTRIBUTE_ERR = 10
    };

    explicit CDomException(int code) : m_nCode(code) {}
    int GetCode() const { return m_nCode; }
    void GetMessage(DomString& text) const override;

    // Throw helpers for the many operations that only refuse.
    [[noreturn]] static void ThrowReadOnly();
    [[noreturn]] static void ThrowNotSupported();

private:
    int m_nCode;
};

}  // namespace Dom
