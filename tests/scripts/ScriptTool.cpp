// kst-script FILE...: runs script files through one interpreter with the driver's parse error
// handler, printing failures as the script extension reports them. A line "//---" in a file
// starts a further program, so that one file can hold several failing programs.
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>

#include "core/Utf8Encoding.h"
#include "core/main/ConsoleErrorHandler.h"
#include "ecmascript/EcmaScriptException.h"
#include "ecmascript/Interpreter.h"

namespace {

DomString Decode(const std::string& bytes) {
    Core::CUtf8Encoding encoding;
    DomString text(bytes.size(), u'\0');
    int consumed = 0;
    bool incomplete = false;
    int count = encoding.Decode(reinterpret_cast<const unsigned char*>(bytes.data()), static_cast<int>(bytes.size()),
                                consumed, text.data(), static_cast<int>(text.size()), incomplete);
    text.resize(count);
    return text;
}

// The exception text with the program, function and line of a script failure.
DomString Describe(Core::IException* error) {
    DomString text;
    error->GetMessage(text);
    auto* failure = dynamic_cast<EcmaScript::CEcmaScriptException*>(error);
    if (!failure) return text;
    const DomString& program = failure->GetProgramName();
    const DomString& function = failure->GetFunctionName();
    if (!program.empty()) text += u"\n    Program '" + program + u"'";
    if (!function.empty() || failure->GetLine() > 0) {
        text += program.empty() ? u"\n    " : u"\n        ";
        if (!function.empty()) text += u"function '" + function + u"'";
        if (failure->GetLine() > 0) {
            if (!function.empty()) text += u" ";
            text += u"at line " + Core::WidenLatin1(std::to_string(failure->GetLine()));
        }
    }
    return text;
}

bool RunProgram(EcmaScript::CInterpreter* interpreter, const DomString& name, const DomString& text, int firstLine) {
    interpreter->SetInputStream(new EcmaScript::CStringCharacterStream(text));
    interpreter->SetProgramName(name);
    interpreter->SetFirstLine(firstLine);
    try {
        interpreter->Run();
        return true;
    } catch (Core::IException* error) {
        std::fflush(stdout);
        std::fprintf(stderr, "%s\n", Core::ToUtf8(Describe(error)).c_str());
        delete error;
        return false;
    }
}

bool RunFile(EcmaScript::CInterpreter* interpreter, const char* path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        std::fprintf(stderr, "Cannot open %s\n", path);
        return false;
    }
    std::stringstream bytes;
    bytes << file.rdbuf();
    DomString text = Decode(bytes.str());
    DomString name = Core::WidenLatin1(path);
    bool ok = true;
    int line = 1, firstLine = 1;
    size_t start = 0, position = 0;
    while (position <= text.size()) {
        size_t end = text.find(u'\n', position);
        if (end == DomString::npos) end = text.size();
        if (DomStringView(text).substr(position, end - position) == u"//---") {
            ok = RunProgram(interpreter, name, text.substr(start, position - start), firstLine) && ok;
            start = end + 1;
            firstLine = line + 1;
        }
        position = end + 1;
        ++line;
    }
    if (start < text.size()) ok = RunProgram(interpreter, name, text.substr(start), firstLine) && ok;
    return ok;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "Usage: kst-script FILE...\n");
        return 2;
    }
    TRefPtr<EcmaScript::CInterpreter> interpreter = new EcmaScript::CInterpreter;
    interpreter->SetErrorHandler(new CConsoleErrorHandler(100));
    bool ok = true;
    for (int i = 1; i < argc; ++i) ok = RunFile(interpreter, argv[i]) && ok;
    interpreter->Shutdown();
    return ok ? 0 : 1;
}
