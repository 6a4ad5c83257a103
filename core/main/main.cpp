// The command-line driver: banner, arguments, the objects of one run in their order, and the one
// handler that reports whatever failure reaches it. Exit status 0 for a run that was not
// terminated, 1 otherwise (usage and file-name errors included).
#include <new>
#include <stdexcept>

#include "core/EncodingTable.h"
#include "core/Exception.h"
#include "core/main/CommandLine.h"
#include "core/main/Console.h"
#include "core/main/ConsoleErrorHandler.h"
#include "core/main/ConsoleStream.h"
#include "ecmascript/Interpreter.h"
#include "uri/UriConversions.h"
#include "xslt/Environment.h"
#include "xslt/Transformer.h"

namespace {

// The driver's own texts.
const DomChar kBanner[] =
    u"\n"
    u"Kestrel XSLT Processor version 1.50.00, Standard Edition\n"
    u"Copyright (c) 1999-2001 The Kestrel Project. All rights reserved.\n"
    u"\n";
const DomChar kUsage[] = u"Usage: kst [/Pparameter=value ...] document stylesheet output\n";
const DomChar kInvalidParameter[] = u"Invalid parameter: %s\n";
const DomChar kInvalidDocument[] = u"Invalid document file name: %s\n";
const DomChar kInvalidStylesheet[] = u"Invalid stylesheet file name: %s\n";
const DomChar kInvalidOutput[] = u"Invalid output file name: %s\n";
const DomChar kFailure[] = u"%s\n";
const DomChar kOutOfMemory[] = u"Out of memory\n";
const DomChar kTerminated[] = u"Processing terminated.\n";

struct SRunUris {
    DomString sDocument;
    DomString sStylesheet;
    DomString sOutput;
};

bool ScanCommandLine(int argc, char** argv, CCommandLine& commandLine) {
    switch (commandLine.Scan(argc, argv)) {
        case CCommandLine::Complete:
            return true;
        case CCommandLine::InvalidParameter:
            Console::Print(kInvalidParameter, commandLine.GetFailedWord());
            return false;
        case CCommandLine::Usage:
            break;
    }
    Console::Print(kUsage);
    return false;
}

bool ToUri(const DomString& fileName, DomString& uri, const DomChar* failure) {
    if (Uri::FileNameToUri(fileName, uri)) return true;
    Console::Print(failure, fileName);
    return false;
}

bool MakeUris(const CCommandLine& commandLine, SRunUris& uris) {
    return ToUri(commandLine.GetDocument(), uris.sDocument, kInvalidDocument) &&
           ToUri(commandLine.GetStylesheet(), uris.sStylesheet, kInvalidStylesheet) &&
           ToUri(commandLine.GetOutput(), uris.sOutput, kInvalidOutput);
}

void ReportTermination(const DomString& text) {
    Console::Print(kFailure, text);
    Console::Print(kTerminated);
}

// Creates the objects of a run in their order, runs the transformation and releases them in
// reverse order. Returns false when the run was terminated by a failure.
bool RunTransformation(const SRunUris& uris, Xslt::CParameterList* parameters) {
    TRefPtr<Core::CEncodingTable> encodingTable;
    TRefPtr<CConsoleErrorHandler> errorHandler;
    TRefPtr<EcmaScript::CInterpreter> interpreter;
    TRefPtr<Xslt::CEnvironment> environment;
    TRefPtr<CConsoleStream> stream;
    TRefPtr<Xslt::CExtensionRegistry> registry;
    TRefPtr<Xslt::CTransformer> transformer;
    bool completed = false;
    try {
        encodingTable = new Core::CEncodingTable();
        errorHandler = new CConsoleErrorHandler(100);
        interpreter = new EcmaScript::CInterpreter();
        interpreter->SetErrorHandler(errorHandler);
        environment = new Xslt::CEnvironment();
        stream = new CConsoleStream();
        environment->SetMessageStream(stream);
        environment->SetDiagnosticStream(stream);
        registry = environment->GetExtensionRegistry();
        // The extension factories are added here, in search order: Reports, ECMAScript (with the
        // interpreter and the encoding table), TextInput.
        transformer = new Xslt::CTransformer(environment);
        transformer->SetDocumentUri(uris.sDocument);
        transformer->SetStylesheetUri(uris.sStylesheet);
        transformer->SetOutputUri(uris.sOutput);
        transformer->SetParameters(parameters);
        transformer->Run();
        completed = true;
    } catch (Core::IException* exception) {
        DomString text;
        exception->GetMessage(text);
        delete exception;
        ReportTermination(text);
    } catch (const std::bad_alloc&) {
        Console::Print(kOutOfMemory);
        Console::Print(kTerminated);
    } catch (const std::length_error&) {
        // Texts beyond the greatest string length fail like exhausted memory.
        Console::Print(kOutOfMemory);
        Console::Print(kTerminated);
    }
    transformer = nullptr;
    // The extension factories are released here.
    registry = nullptr;
    stream = nullptr;
    environment = nullptr;
    // Shutting down clears the interpreter's global object, which breaks the cycles among
    // script objects that counting alone cannot free.
    if (interpreter) interpreter->Shutdown();
    interpreter = nullptr;
    errorHandler = nullptr;
    encodingTable = nullptr;
    return completed;
}

}  // namespace

int main(int argc, char** argv) {
    Console::Print(kBanner);
    CCommandLine commandLine;
    if (!ScanCommandLine(argc, argv, commandLine)) return 1;
    SRunUris uris;
    if (!MakeUris(commandLine, uris)) return 1;
    return RunTransformation(uris, commandLine.GetParameters()) ? 0 : 1;
}
