// The interpreter as a host sees it: running programs, the exceptions it throws, and host
// objects and calls through the global object.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "ecmascript/Conversions.h"
#include "ecmascript/EcmaScriptException.h"
#include "ecmascript/Interpreter.h"
#include "ecmascript/ParseError.h"

namespace {

using namespace EcmaScript;

class CCollectingHandler : public IParseErrorHandler {
public:
    bool Report(int line, const DomString& message) override {
        m_aReports.push_back(std::to_string(line) + ": " + Core::ToUtf8(message));
        return true;
    }
    std::vector<std::string> m_aReports;
};

// A host function that records its arguments and answers their count.
class CHostFunction : public CObject {
public:
    explicit CHostFunction(CGlobalObject* global) : CObject(global, global->GetFunctionPrototype()) {}
    const DomChar* GetTypeofName() const override { return u"function"; }
    TRefPtr<CValue> Call(CObject*, const CValueList& arguments) override {
        for (int i = 0; i < arguments.GetSize(); ++i) m_sSeen += ToString(arguments[i]) + u";";
        return CValue::Integer(arguments.GetSize());
    }
    DomString m_sSeen;
};

class InterpreterTest : public ::testing::Test {
protected:
    void TearDown() override { m_pInterpreter->Shutdown(); }

    TRefPtr<CValue> Run(const DomString& text, const DomString& name = u"test.js", int firstLine = 1) {
        m_pInterpreter->SetInputStream(new CStringCharacterStream(text));
        m_pInterpreter->SetProgramName(name);
        m_pInterpreter->SetFirstLine(firstLine);
        m_pInterpreter->SetErrorHandler(m_pHandler);
        return m_pInterpreter->Run();
    }
    TRefPtr<CValue> Global(const char16_t* name) { return m_pInterpreter->GetGlobalObject()->Get(CName(name)); }

    TRefPtr<CInterpreter> m_pInterpreter = new CInterpreter;
    TRefPtr<CCollectingHandler> m_pHandler = new CCollectingHandler;
};

TEST_F(InterpreterTest, KeepsDefinitionsAcrossRunsAndGivesTheCompletionValue) {
    Run(u"var total = 40; function add(a, b) { return a + b; }");
    TRefPtr<CValue> value = Run(u"total = add(total, 2); total;");
    EXPECT_EQ(ToString(value), u"42");
    EXPECT_EQ(ToString(Global(u"total")), u"42");
}

TEST_F(InterpreterTest, ReportsParseErrorsAndRunsNothing) {
    try {
        Run(u"var ran = 1;\nvar = 2;\nx = (;", u"broken.js");
        FAIL() << "no exception";
    } catch (CParseError* error) {
        DomString text;
        error->GetMessage(text);
        EXPECT_EQ(text, u"Error(s) encountered during program parsing\n    Program 'broken.js'");
        delete error;
    }
    EXPECT_EQ(m_pHandler->m_aReports,
              (std::vector<std::string>{"2: Missing variable name", "3: Invalid primary expression"}));
    EXPECT_EQ(Global(u"ran")->GetType(), TypeUndefined);
}

TEST_F(InterpreterTest, RuntimeErrorsCarryProgramFunctionAndLine) {
    Run(u"function inner() {\n  return missing;\n}\nfunction outer() { return inner(); }", u"lib.js");
    try {
        Run(u"\n\nouter();", u"main.js", 10);
        FAIL() << "no exception";
    } catch (CEcmaScriptException* error) {
        DomString text;
        error->GetMessage(text);
        EXPECT_EQ(text, u"ECMAScript runtime error: GetValue: invalid reference");
        EXPECT_EQ(error->GetProgramName(), u"lib.js");
        EXPECT_EQ(error->GetFunctionName(), u"inner");
        EXPECT_EQ(error->GetLine(), 2);
        ASSERT_NE(error->GetValue(), nullptr);
        EXPECT_EQ(error->GetValue()->GetReference()->name.GetText(), u"missing");
        delete error;
    }
}

TEST_F(InterpreterTest, HostObjectsAndCallsGoThroughTheGlobalObject) {
    CGlobalObject* global = m_pInterpreter->GetGlobalObject();
    TRefPtr<CHostFunction> host = new CHostFunction(global);
    global->Define(CName(u"host"), CValue::Object(host), DontEnum, true);
    Run(u"var answer = host(1, 'two', null); function twice(x) { return x * 2; }");
    EXPECT_EQ(host->m_sSeen, u"1;two;null;");
    EXPECT_EQ(ToString(Global(u"answer")), u"3");

    CValueList arguments;
    arguments.Add(CValue::Integer(21));
    TRefPtr<CValue> twice = Global(u"twice");
    ASSERT_NE(twice->GetObject(), nullptr);
    EXPECT_EQ(ToString(twice->GetObject()->Call(nullptr, arguments)), u"42");

    CContext context(global);
    EXPECT_EQ(ToString(context.Lookup(CName(u"answer"))), u"3");
    EXPECT_THROW(
        try { context.Lookup(CName(u"nothing")); } catch (Core::IException* error) {
            delete error;
            throw 1;
        },
        int);
}

TEST_F(InterpreterTest, EvalRunsInTheCallersContextAndGivesUndefined) {
    Run(u"function f() { var local = 1; eval('local = local + 1; var added = 5'); return local + added; }"
        u"var result = f(); var direct = eval('1 + 1'); var same = eval(7);");
    EXPECT_EQ(ToString(Global(u"result")), u"7");
    EXPECT_EQ(Global(u"direct")->GetType(), TypeUndefined);
    EXPECT_EQ(ToString(Global(u"same")), u"7");
    EXPECT_EQ(Global(u"added")->GetType(), TypeUndefined);
}

TEST_F(InterpreterTest, ShutdownBreaksTheStandardCycles) {
    Run(u"var keep = new Array(1, 2);");
    CObject* prototype = m_pInterpreter->GetGlobalObject()->GetObjectPrototype();
    TRefPtr<CObject> held = prototype;
    m_pInterpreter->Shutdown();
    EXPECT_EQ(held->GetRefCount(), 1);
    EXPECT_EQ(m_pInterpreter->GetGlobalObject(), nullptr);
    EXPECT_EQ(Run(u"var after = 1;"), nullptr);
}

}  // namespace
