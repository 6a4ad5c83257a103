// Steps a global pattern with alternation, classes and quantifiers through a generated text of
// 10 MB of words, mail addresses and dates, as the script's String methods do, and times it.
// Usage: regexp_bench [megabytes, default 10]
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "regexp/RegExp.h"

namespace {

DomString Generate(long units) {
    static const char* const kWords[] = {"alpha", "beta", "gamma", "delta", "report", "total", "x", "Q4"};
    static const char* const kDomains[] = {"example.com", "mail.example.org", "test.net"};
    DomString text;
    text.reserve(static_cast<size_t>(units) + 64);
    unsigned seed = 12345;
    while (static_cast<long>(text.size()) < units) {
        seed = seed * 1103515245 + 12345;
        unsigned pick = (seed >> 16) % 16;
        std::string piece;
        if (pick == 0)
            piece = std::string(kWords[seed % 8]) + "." + kWords[(seed >> 3) % 8] + "@" + kDomains[(seed >> 6) % 3];
        else if (pick == 1)
            piece = std::to_string(1990 + seed % 40) + "-0" + std::to_string(1 + seed % 9) + "-1" + std::to_string(seed % 10);
        else
            piece = kWords[seed % 8];
        text += Core::Ascii(piece);
        text += (seed & 0x100) ? u' ' : u'\n';
    }
    return text;
}

}  // namespace

int main(int argc, char** argv) {
    long megabytes = argc > 1 ? std::atol(argv[1]) : 10;
    DomString text = Generate(megabytes * 1024 * 1024);
    const DomString pattern = u"([\\w.]+)@(\\w+(?:\\.\\w+)*)\\.(?:com|org|net)|(\\d{4})-(\\d\\d)-(\\d\\d)";
    TRefPtr<EcmaScript::CRegExp> regexp = new EcmaScript::CRegExp(pattern, true, false, false);
    EcmaScript::CMatchResult result;
    long matches = 0;
    auto start = std::chrono::steady_clock::now();
    while (regexp->Next(text, result)) ++matches;
    double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::printf("%ld MB of text, %ld matches in %.3f s: %.1f MB/s\n", megabytes, matches, seconds,
                static_cast<double>(megabytes) / seconds);
    return 0;
}
