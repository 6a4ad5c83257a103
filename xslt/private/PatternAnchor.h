// The start of a path pattern: what the node above the outermost step must be.
#pragma once
#include <cstdint>

#include "core/DomString.h"
#include "core/RefObject.h"
#include "dom/Node.h"

namespace Core {
class IException;
}

namespace XsltPrivate {

class IPatternContext;

class CPatternAnchor : public CRefObject {
public:
    enum { Relative = 0, Root = 1, Id = 2, Key = 3 };
    virtual int32_t GetKind() const = 0;
    virtual bool Matches(IPatternContext* context, Dom::CNode* node) const = 0;
};

// No anchor: any node will do.
class CRelativeAnchor : public CPatternAnchor {
public:
    int32_t GetKind() const override { return Relative; }
    bool Matches(IPatternContext*, Dom::CNode*) const override { return true; }
};

// A leading "/": the root of the tree that holds the context's current node.
class CRootAnchor : public CPatternAnchor {
public:
    int32_t GetKind() const override { return Root; }
    bool Matches(IPatternContext* context, Dom::CNode* node) const override;
};

// id('literal'): the node's ID value equals the literal exactly.
class CIdAnchor : public CPatternAnchor {
public:
    explicit CIdAnchor(DomString literal) : m_sLiteral(std::move(literal)) {}
    int32_t GetKind() const override { return Id; }
    bool Matches(IPatternContext* context, Dom::CNode* node) const override;

private:
    DomString m_sLiteral;
};

// key('name', 'value'): the node has the value under that key. The prefix of the name is
// resolved at match time; an unknown prefix is pattern error 8.
class CKeyAnchor : public CPatternAnchor {
public:
    CKeyAnchor(DomString prefix, DomString localName, DomString literal)
        : m_sPrefix(std::move(prefix)), m_sLocalName(std::move(localName)), m_sLiteral(std::move(literal)) {}
    int32_t GetKind() const override { return Key; }
    bool Matches(IPatternContext* context, Dom::CNode* node) const override;

private:
    DomString m_sPrefix;
    DomString m_sLocalName;
    DomString m_sLiteral;
};

// Stands for a pattern that failed to parse: testing a node throws a copy of the failure.
class CFailedAnchor : public CPatternAnchor {
public:
    explicit CFailedAnchor(Core::IException* failure) : m_pFailure(failure) {}
    ~CFailedAnchor() override;
    int32_t GetKind() const override { return Relative; }
    bool Matches(IPatternContext* context, Dom::CNode* node) const override;

private:
    Core::IException* m_pFailure;
};

}  // namespace XsltPrivate
