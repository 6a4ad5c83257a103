// Parse-only throughput: generated documents of 1, 10 and 100 MB are written to a temporary
// file, parsed into a handler that ignores its events, and timed. Prints MB/s and peak memory.
// Usage: xmlparse_bench [directory for the generated files, default /tmp]
#include <chrono>
#include <ctime>
#include <cstdio>
#include <fstream>
#include <string>

#include "uri/UriConversions.h"
#include "xmlparser/ParseException.h"
#include "xmlparser/Parser.h"

namespace {

class CNullHandler : public Sxp::IContentHandler {
public:
    long m_nEvents = 0;
    void SetLocator(Sxp::ILocator*) override {}
    void StartDocument() override {}
    void EndDocument() override {}
    void StartElement(DomStringView) override { ++m_nEvents; }
    void EndElement() override {}
    void StartAttribute(DomStringView) override {}
    void EndAttribute() override {}
    void Characters(const DomChar*, int) override { ++m_nEvents; }
    void StartComment() override {}
    void EndComment() override {}
    void StartCData() override {}
    void EndCData() override {}
    void SkippedEntity(DomStringView) override {}
    void ProcessingInstruction(DomStringView, DomStringView) override {}
};

// A catalogue of records with attributes, text, references, comments and some non-ASCII text.
void Generate(const std::string& path, long bytes) {
    std::ofstream out(path, std::ios::binary);
    out << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<!DOCTYPE catalog [\n"
           "  <!ENTITY co \"Example Company\">\n  <!ATTLIST item status CDATA \"active\">\n]>\n<catalog>\n";
    long written = 0;
    for (long i = 0; written < bytes; ++i) {
        std::string record = "  <item id=\"i" + std::to_string(i) + "\" price=\"" + std::to_string(i % 997) +
                             ".50\" currency=\"EUR\">\n"
                             "    <name>Item number " + std::to_string(i) + " &amp; friends of &co;</name>\n"
                             "    <description>Lorem ipsum dolor sit amet, consectetur adipiscing elit, sed do "
                             "eiusmod tempor incididunt ut labore et dolore magna aliqua. Caf\xC3\xA9 "
                             "\xE4\xB8\xAD\xE6\x96\x87 &#x263A;</description>\n"
                             "    <!-- record " + std::to_string(i) + " -->\n"
                             "    <tags><tag>alpha</tag><tag>beta</tag><tag kind=\"x\"/></tags>\n"
                             "  </item>\n";
        out << record;
        written += static_cast<long>(record.size());
    }
    out << "</catalog>\n";
}

long PeakKilobytes() {
    std::ifstream status("/proc/self/status");
    std::string line;
    while (std::getline(status, line)) {
        if (line.rfind("VmHWM:", 0) == 0) return std::stol(line.substr(6));
    }
    return -1;
}

void Run(const std::string& directory, int megabytes) {
    std::string path = directory + "/kst_xmlparse_bench_" + std::to_string(megabytes) + "mb.xml";
    Generate(path, static_cast<long>(megabytes) << 20);
    std::ifstream probe(path, std::ios::binary | std::ios::ate);
    double size = static_cast<double>(probe.tellg()) / (1 << 20);
    DomString uri;
    Uri::FileNameToUri(Core::WidenLatin1(path), uri);

    TRefPtr<CNullHandler> handler = new CNullHandler();
    TRefPtr<Sxp::CParser> parser = new Sxp::CParser();
    parser->SetContentHandler(handler);
    auto start = std::chrono::steady_clock::now();
    std::clock_t cpuStart = std::clock();
    try {
        parser->ParseUri(uri);
    } catch (Sxp::CParseException* exception) {
        std::printf("parse failed with code %d at %d:%d\n", exception->GetCode(), exception->GetLine(),
                    exception->GetColumn());
        delete exception;
    }
    double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    double cpuSeconds = static_cast<double>(std::clock() - cpuStart) / CLOCKS_PER_SEC;
    std::printf("%4d MB document (%.1f MB): parse-only %.3f s, %.1f MB/s (%.1f MB/s of CPU time), %ld events, "
                "peak memory %ld kB\n",
                megabytes, size, seconds, size / seconds, size / cpuSeconds, handler->m_nEvents, PeakKilobytes());
    std::remove(path.c_str());
}

}  // namespace

int main(int argc, char** argv) {
    std::string directory = argc > 1 ? argv[1] : "/tmp";
    for (int megabytes : {1, 10, 100}) Run(directory, megabytes);
    return 0;
}
