// format-number(): its arguments and decimal format are checked, and then the call is refused,
// since number patterns are not implemented.
#pragma once
#include "xslt/private/FunctionLibrary.h"

namespace XsltPrivate {

class CFormatNumberFunction : public CLibraryFunction {
public:
    explicit CFormatNumberFunction(CRuntime* runtime) : CLibraryFunction(runtime, u"format-number", 2, 3) {}

protected:
    void Run(TRefPtr<Xpath::CValue>& result, CExecutionContext& active, Xpath::CContext* context,
             const FArguments& arguments) override;
};

}  // namespace XsltPrivate
