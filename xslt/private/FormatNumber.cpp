// The checks of format-number() in their order, then the refusal.
#include "xslt/private/FormatNumber.h"

#include "xpath/Converter.h"
#include "xslt/XsltException.h"
#include "xslt/private/ExecutionContext.h"
#include "xslt/private/Runtime.h"

namespace XsltPrivate {

using Xslt::CXsltException;

void CFormatNumberFunction::Run(TRefPtr<Xpath::CValue>&, CExecutionContext& active, Xpath::CContext* context,
                                const FArguments& arguments) {
    // The conversions come first, so that their failures surface before the refusal.
    Xpath::CConverter converter(context);
    converter.ToNumber(arguments[0]);
    converter.ToString(arguments[1]);
    SQName name;
    if (arguments.GetSize() == 3) ResolveQName(active, StringArgument(context, arguments, 2), name);
    if (!m_pRuntime->FindDecimalFormat(name.sUri, name.sLocalName)) {
        // A default format with the default properties always stands in for the empty name.
        if (arguments.GetSize() == 3) {
            active.RaiseFatal(CXsltException::DecimalFormatNotFound, name.sUri, name.sLocalName);
        }
    }
    active.RaiseFatal(CXsltException::UnsupportedFeature, u"function", u"format-number");
}

}  // namespace XsltPrivate
