// The pattern grammar on the XPath scanner and token machinery: alternatives separated by "|",
// each an optional anchor ("/", "//", id('x'), key('k', 'v')) and child or attribute steps
// joined by "/" and "//". Axis names other than child and attribute, "." and ".." are refused.
//
// Use: CPatternParser parser; parser.Parse(pattern, text); throws CPatternException or
// Xpath::CXpathException (for node tests, predicates and the brackets of id() and key()).
#pragma once
#include "xpath/Parser.h"
#include "xslt/private/Pattern.h"

namespace XsltPrivate {

class CPatternParser : public Xpath::CParser {
public:
    void Parse(TRefPtr<CPattern>& pattern, DomStringView text);

private:
    void ParsePathPattern(CPattern* pattern);
    // Makes the anchor; true if a step must follow it.
    bool ParseAnchor(TRefPtr<CPatternAnchor>& anchor);
    void ParseFunctionAnchor(TRefPtr<CPatternAnchor>& anchor, const DomString& name);
    void ParseStep(TRefPtr<CPatternStep>& step);
    void ExpectLiteral(DomString& literal);
    // The brackets and comma of id() and key() report XPath errors under these numbers, with
    // an empty argument.
    void ExpectPunctuation(int32_t kind, int number);
};

}  // namespace XsltPrivate
