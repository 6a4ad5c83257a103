// Measures document building: a generated catalogue document of the requested sizes is written
// to a temporary file, then parsed into a tree (and, separately, the same shape is built from
// events without the parser). Each measurement runs in a child process, so that its peak
// resident size is its own. Usage: dombuild_bench [parse|events] [megabytes ...] (default: both
// measurements of 1, 10 and 100 MB).
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "core/FileStream.h"
#include "dom/DocumentBuilder.h"
#include "xmlparser/Parser.h"

namespace {

// One record of the catalogue, about 330 bytes, indented as people write it.
void AppendRecord(std::string& text, long n) {
    std::string id = std::to_string(n);
    text += "  <book id=\"bk" + id + "\" lang=\"en\">\n";
    text += "    <title>The collected works, volume " + id + "</title>\n";
    text += "    <author>Writer " + std::to_string(n % 977) + "</author>\n";
    text += "    <price currency=\"EUR\">" + std::to_string(n % 100) + ".95</price>\n";
    text += "    <description>A book about things that happen, with notes &amp; an index; part " + id +
            ".</description>\n";
    text += "  </book>\n";
}

std::string WriteDocument(long megabytes) {
    std::string name = "/tmp/dombuild_" + std::to_string(megabytes) + "mb_" + std::to_string(getpid()) + ".xml";
    FILE* file = std::fopen(name.c_str(), "wb");
    if (!file) return std::string();
    long target = megabytes * 1000000L;
    long written = 0;
    std::string block = "<?xml version=\"1.0\"?>\n<catalog>\n";
    for (long n = 0; written + static_cast<long>(block.size()) < target - 20; ++n) {
        AppendRecord(block, n);
        if (block.size() > 1 << 16) {
            written += static_cast<long>(std::fwrite(block.data(), 1, block.size(), file));
            block.clear();
        }
    }
    block += "</catalog>\n";
    written += static_cast<long>(std::fwrite(block.data(), 1, block.size(), file));
    std::fclose(file);
    return name;
}

// Processor time of this process, user and system: on a shared machine it tells more than the
// clock on the wall.
double CpuSeconds() {
    rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_utime.tv_sec + usage.ru_stime.tv_sec + (usage.ru_utime.tv_usec + usage.ru_stime.tv_usec) / 1e6;
}

long PeakKilobytes() {
    rusage usage;
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

double Seconds(std::chrono::steady_clock::time_point start) {
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void Report(const char* what, long bytes, double seconds, double cpuSeconds, long peakBefore) {
    long peak = PeakKilobytes();
    std::printf("%-12s %6.1f MB  wall %7.3f s %6.1f MB/s  cpu %7.3f s %6.1f MB/s  peak %7.1f MB = %.2fx (%.1f MB before)\n",
                what, bytes / 1e6, seconds, bytes / 1e6 / seconds, cpuSeconds, bytes / 1e6 / cpuSeconds, peak / 1024.0,
                peak * 1024.0 / bytes, peakBefore / 1024.0);
}

Dom::CDocument* NewDocument(Dom::TNodeRef& document, TRefPtr<Dom::CDocumentBuilder>& builder) {
    TRefPtr<Dom::CDocumentFactory> factory = new Dom::CDocumentFactory(0);
    factory->CreateDocument(document);
    Dom::CDocumentBuilder::Create(document, nullptr, nullptr, builder);
    return static_cast<Dom::CDocument*>(document.Get());
}

int ParseAndBuild(const std::string& fileName, long bytes) {
    long before = PeakKilobytes();
    double cpuStart = CpuSeconds();
    auto start = std::chrono::steady_clock::now();
    Dom::TNodeRef document;
    TRefPtr<Dom::CDocumentBuilder> builder;
    NewDocument(document, builder);
    TRefPtr<Core::CFileStream> stream = new Core::CFileStream();
    if (!stream->Open(Core::Ascii(fileName), Core::CFileStream::ReadBinary)) return 1;
    TRefPtr<Sxp::CInputSource> source = new Sxp::CInputSource();
    source->SetByteStream(stream);
    TRefPtr<Sxp::CParser> parser = new Sxp::CParser();
    parser->SetContentHandler(builder);
    try {
        parser->Parse(source);
    } catch (Core::IException* exception) {
        DomString message;
        exception->GetMessage(message);
        std::fprintf(stderr, "parse failed: %s\n", Core::ToUtf8(message).c_str());
        delete exception;
        return 1;
    }
    Report("parse+build", bytes, Seconds(start), CpuSeconds() - cpuStart, before);
    return 0;
}

// The same records as events, to tell the tree's share of the time from the parser's.
int BuildFromEvents(long bytes) {
    long before = PeakKilobytes();
    double cpuStart = CpuSeconds();
    auto start = std::chrono::steady_clock::now();
    Dom::TNodeRef document;
    TRefPtr<Dom::CDocumentBuilder> builder;
    NewDocument(document, builder);
    std::string text;
    long produced = 0;
    builder->StartDocument();
    builder->StartElement(u"catalog");
    auto characters = [&](const DomString& units) { builder->Characters(units.data(), static_cast<int>(units.size())); };
    auto attribute = [&](const char16_t* name, const DomString& value) {
        builder->StartAttribute(name);
        characters(value);
        builder->EndAttribute();
    };
    auto element = [&](const char16_t* name, const DomString& content) {
        characters(u"\n    ");
        builder->StartElement(name);
        characters(content);
        builder->EndElement();
    };
    for (long n = 0; produced < bytes; ++n) {
        text.clear();
        AppendRecord(text, n);
        produced += static_cast<long>(text.size());
        DomString id = Core::Ascii(std::to_string(n));
        characters(u"\n  ");
        builder->StartElement(u"book");
        attribute(u"id", u"bk" + id);
        attribute(u"lang", u"en");
        element(u"title", u"The collected works, volume " + id);
        element(u"author", u"Writer " + Core::Ascii(std::to_string(n % 977)));
        characters(u"\n    ");
        builder->StartElement(u"price");
        attribute(u"currency", u"EUR");
        characters(Core::Ascii(std::to_string(n % 100)) + u".95");
        builder->EndElement();
        element(u"description", u"A book about things that happen, with notes & an index; part " + id + u".");
        characters(u"\n  ");
        builder->EndElement();
    }
    builder->EndElement();
    builder->EndDocument();
    Report("events only", bytes, Seconds(start), CpuSeconds() - cpuStart, before);
    return 0;
}

template <class F>
void InChild(F run) {
    std::fflush(stdout);
    pid_t child = fork();
    if (child == 0) {
        int status = run();
        std::fflush(stdout);
        std::_Exit(status);
    }
    int status = 0;
    waitpid(child, &status, 0);
}

}  // namespace

int main(int argc, char** argv) {
    std::vector<long> sizes;
    bool parse = true, events = true;
    for (int i = 1; i < argc; ++i) {
        std::string word = argv[i];
        if (word == "parse")
            events = false;
        else if (word == "events")
            parse = false;
        else
            sizes.push_back(std::atol(argv[i]));
    }
    if (sizes.empty()) sizes = {1, 10, 100};
    for (long megabytes : sizes) {
        std::string name = WriteDocument(megabytes);
        if (name.empty()) return 1;
        FILE* file = std::fopen(name.c_str(), "rb");
        std::fseek(file, 0, SEEK_END);
        long bytes = std::ftell(file);
        std::fclose(file);
        if (parse) InChild([&] { return ParseAndBuild(name, bytes); });
        if (events) InChild([&] { return BuildFromEvents(bytes); });
        std::remove(name.c_str());
    }
    return 0;
}
