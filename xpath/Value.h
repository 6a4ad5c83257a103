// Results of evaluation. The root class is also the base of extension data types (type code
// 4 and above). A getter of another type does not convert: conversions go through CConverter.
#pragma once
#include <cstdint>

#include "core/DomString.h"
#include "core/RefObject.h"
#include "xpath/Number.h"

namespace Xpath {

class CNodeSet;

enum { TypeNodeSet = 0, TypeBoolean = 1, TypeNumber = 2, TypeString = 3, TypeExtension = 4 };

class CValue : public CRefObject {
public:
    virtual int32_t GetType() const { return TypeExtension; }
    // Borrowed; null for every type but a node-set.
    virtual CNodeSet* GetNodeSet() const { return nullptr; }
    virtual bool GetBoolean() const { return false; }
    virtual CNumber GetNumber() const { return CNumber(); }
    virtual DomString GetString() const { return DomString(); }
};

class CNodeSetValue : public CValue {
public:
    explicit CNodeSetValue(CNodeSet* nodeSet);
    ~CNodeSetValue() override;
    int32_t GetType() const override { return TypeNodeSet; }
    CNodeSet* GetNodeSet() const override;

private:
    TRefPtr<CNodeSet> m_pNodeSet;
};

class CBooleanValue : public CValue {
public:
    explicit CBooleanValue(bool value) : m_bValue(value) {}
    int32_t GetType() const override { return TypeBoolean; }
    bool GetBoolean() const override { return m_bValue; }

private:
    bool m_bValue;
};

class CNumberValue : public CValue {
public:
    explicit CNumberValue(CNumber value) : m_value(value) {}
    int32_t GetType() const override { return TypeNumber; }
    CNumber GetNumber() const override { return m_value; }

private:
    CNumber m_value;
};

class CStringValue : public CValue {
public:
    explicit CStringValue(DomString value) : m_sValue(std::move(value)) {}
    int32_t GetType() const override { return TypeString; }
    DomString GetString() const override { return m_sValue; }
    // The text without a copy, for the conversions.
    const DomString& GetText() const { return m_sValue; }

private:
    DomString m_sValue;
};

}  // namespace Xpath
