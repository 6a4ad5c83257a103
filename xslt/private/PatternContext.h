// The pattern context for one node: made on the stack for the current node before rules are
// tried, it holds the node's name hash, the node stack lent to every pattern tried, and the
// expression context, made on first use through the host.
//
// Use: the execution context implements IPatternHost (or wraps one), then
//     CPatternContext context(host, node);
//     rule = FindBestRule(rules, context, mode, ambiguous);   // RuleMatcher.h
// The object is counted like every interface but lives on the stack: never hold it in a TRefPtr.
#pragma once
#include "xpath/Context.h"
#include "xslt/private/Pattern.h"

namespace XsltPrivate {

// The services of the running transformation that patterns use.
class IPatternHost {
public:
    virtual ~IPatternHost() = default;
    // The XPath context of the running instruction at its current node.
    virtual void MakeExpressionContext(TRefPtr<Xpath::CContext>& context) = 0;
    virtual bool ResolvePrefix(const DomString& prefix, DomString& uri) = 0;
    virtual bool GetElementId(const Dom::CNode* node, DomString& id) = 0;
    virtual bool MatchKey(const Dom::CNode* node, const DomString& uri, const DomString& local,
                          const DomString& value) = 0;
};

class CPatternContext : public IPatternContext {
public:
    CPatternContext(IPatternHost& host, Dom::CNode* node);
    ~CPatternContext() override;
    CPatternContext(const CPatternContext&) = delete;
    CPatternContext& operator=(const CPatternContext&) = delete;

    Xpath::CContext* GetExpressionContext() override;
    Dom::CNode* GetCurrentNode() override { return m_pNode; }
    bool ResolvePrefix(const DomString& prefix, DomString& uri) override;
    bool GetElementId(const Dom::CNode* node, DomString& id) override;
    bool MatchKey(const Dom::CNode* node, const DomString& uri, const DomString& local,
                  const DomString& value) override;
    Dom::CNode** GetNodeStack(int count) override;
    int32_t GetNameHash() override { return m_nNameHash; }

private:
    // Most patterns have few steps: their stack needs no allocation.
    static const int InlineStack = 8;

    IPatternHost& m_host;
    Dom::CNode* m_pNode;
    int32_t m_nNameHash;
    TRefPtr<Xpath::CContext> m_pExpressionContext;
    Dom::CNode* m_apInline[InlineStack];
    TArray<Dom::CNode*> m_aStack;
};

}  // namespace XsltPrivate
