// Escaping through the system's UTF-8 encoding, and the mapping of Linux paths onto "file" URIs:
// "/a/b c.xml" is "file://localhost/a/b%20c.xml"; no drive letters, and no character is dropped.
#include "uri/UriConversions.h"

#include <unistd.h>

#include <cerrno>
#include <string>
#include <vector>

#include "core/FileStream.h"
#include "core/Utf8Encoding.h"
#include "uri/private/CharClass.h"

namespace Uri {

using namespace UriPrivate;

static const Core::CUtf8Encoding& Utf8() {
    static const Core::CUtf8Encoding* encoding = new Core::CUtf8Encoding();
    return *encoding;
}

bool Escape(DomStringView text, DomString& escaped) {
    static const char kDigits[] = "0123456789ABCDEF";
    escaped.clear();
    escaped.reserve(text.size());
    unsigned char bytes[1024];
    const DomChar* units = text.data();
    int count = static_cast<int>(text.size());
    while (count > 0) {
        int written = 0;
        bool failed = false;
        int used = Utf8().Encode(units, count, bytes, sizeof bytes, written, failed);
        if (failed || used == 0) return false;
        for (int i = 0; i < written; ++i) {
            unsigned char b = bytes[i];
            if (IsInClass(b, Alpha | Digit | Reserved | Mark)) {
                escaped += static_cast<DomChar>(b);
            } else {
                escaped += u'%';
                escaped += static_cast<DomChar>(kDigits[b >> 4]);
                escaped += static_cast<DomChar>(kDigits[b & 0xF]);
            }
        }
        units += used;
        count -= used;
    }
    return true;
}

// Full hex, unlike the parser's class: "0" to "9", "A" to "F", "a" to "f".
static int HexValue(DomChar c) {
    if (c >= u'0' && c <= u'9') return c - u'0';
    if (c >= u'A' && c <= u'F') return c - u'A' + 10;
    if (c >= u'a' && c <= u'f') return c - u'a' + 10;
    return -1;
}

static bool UnescapeToBytes(DomStringView escaped, std::vector<unsigned char>& bytes) {
    bytes.reserve(escaped.size());
    for (size_t i = 0; i < escaped.size(); ++i) {
        DomChar c = escaped[i];
        if (c >= 0x80) return false;
        if (c != u'%') {
            bytes.push_back(static_cast<unsigned char>(c));
            continue;
        }
        int high = i + 2 < escaped.size() ? HexValue(escaped[i + 1]) : -1;
        int low = high >= 0 ? HexValue(escaped[i + 2]) : -1;
        if (low < 0) return false;
        bytes.push_back(static_cast<unsigned char>(high * 16 + low));
        i += 2;
    }
    return true;
}

bool Unescape(DomStringView escaped, DomString& text) {
    text.clear();
    std::vector<unsigned char> bytes;
    if (!UnescapeToBytes(escaped, bytes)) return false;
    DomChar units[1024];
    int pos = 0;
    int count = static_cast<int>(bytes.size());
    while (pos < count) {
        int consumed = 0;
        bool incomplete = false;
        int n = Utf8().Decode(bytes.data() + pos, count - pos, consumed, units, 1024, incomplete);
        if (incomplete || (n == 0 && consumed == 0)) return false;
        text.append(units, static_cast<size_t>(n));
        pos += consumed;
    }
    return true;
}

// Stands in for the platform's full-path call: a relative name is joined to the current
// directory, and "." and ".." segments and doubled "/" are folded without touching the disk.
static bool MakeAbsolute(DomStringView fileName, DomString& full) {
    if (fileName.empty() || fileName.find(u'\0') != DomStringView::npos) return false;
    DomString joined;
    if (fileName[0] != u'/') {
        std::vector<char> buffer(1024);
        while (!getcwd(buffer.data(), buffer.size())) {
            if (errno != ERANGE || buffer.size() > (1u << 20)) return false;
            buffer.resize(buffer.size() * 2);
        }
        joined = Core::FromPlatformName(buffer.data());
        joined += u'/';
    }
    joined += fileName;
    std::vector<DomStringView> segments;
    DomStringView rest(joined);
    while (!rest.empty()) {
        size_t slash = rest.find(u'/');
        DomStringView segment = rest.substr(0, slash);
        rest = slash == DomStringView::npos ? DomStringView() : rest.substr(slash + 1);
        if (segment.empty() || segment == u".") continue;
        if (segment == u"..") {
            if (!segments.empty()) segments.pop_back();
            continue;
        }
        segments.push_back(segment);
    }
    full.clear();
    for (DomStringView segment : segments) {
        full += u'/';
        full += segment;
    }
    if (full.empty() || fileName.back() == u'/') full += u'/';
    return true;
}

bool FileNameToUri(DomStringView fileName, DomString& uri) {
    DomString full;
    if (!MakeAbsolute(fileName, full)) return false;
    return Escape(u"file://localhost" + full, uri);
}

bool UriToFileName(DomStringView uri, DomString& fileName) {
    fileName.clear();
    static const DomStringView kLocalhost = u"file://localhost/";
    static const DomStringView kEmptyHost = u"file:///";
    DomStringView rest;
    if (uri.substr(0, kLocalhost.size()) == kLocalhost) {
        rest = uri.substr(kLocalhost.size());
    } else if (uri.substr(0, kEmptyHost.size()) == kEmptyHost) {
        rest = uri.substr(kEmptyHost.size());
    } else {
        return false;
    }
    DomString path;
    if (!Unescape(rest, path)) return false;
    fileName = u'/' + path;
    return true;
}

}  // namespace Uri
