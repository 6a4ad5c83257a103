// Times XPath expressions over a generated document of about 10 MB (built from events, so
// that only evaluation is measured). Each expression is parsed once and evaluated, with its
// result converted or walked, three times; the best time is reported.
// Usage: xpath_bench [megabytes [expression]]
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "dom/Document.h"
#include "dom/DocumentBuilder.h"
#include "xpath/Context.h"
#include "xpath/Converter.h"
#include "xpath/CoreFunctionLibrary.h"
#include "xpath/Expression.h"
#include "xpath/NodeSet.h"
#include "xpath/Parser.h"
#include "xpath/Value.h"

namespace {

void Text(Dom::CDocumentBuilder* builder, const std::string& text) {
    DomString units = Core::WidenLatin1(text);
    builder->Characters(units.data(), static_cast<int>(units.size()));
}

void Attribute(Dom::CDocumentBuilder* builder, const char* name, const std::string& value) {
    builder->StartAttribute(Core::WidenLatin1(name));
    Text(builder, value);
    builder->EndAttribute();
}

void Element(Dom::CDocumentBuilder* builder, const char* name, const std::string& text) {
    builder->StartElement(Core::WidenLatin1(name));
    Text(builder, text);
    builder->EndElement();
}

// One item is about 200 bytes of markup; returns the number of bytes it stands for.
long AddItem(Dom::CDocumentBuilder* builder, long n) {
    std::string id = "i" + std::to_string(n);
    builder->StartElement(u"item");
    Attribute(builder, "id", id);
    Attribute(builder, "kind", n % 3 ? "plain" : "special");
    Text(builder, "\n  ");
    Element(builder, "name", "Item number " + std::to_string(n));
    Text(builder, "\n  ");
    Element(builder, "value", std::to_string(n % 1000) + ".5");
    Text(builder, "\n  ");
    builder->StartElement(u"tags");
    Element(builder, "tag", "alpha");
    Element(builder, "tag", "beta");
    builder->EndElement();
    Text(builder, "\n");
    builder->EndElement();
    Text(builder, "\n");
    return 190 + 3 * static_cast<long>(id.size());
}

long BuildDocument(Dom::TNodeRef& document, long megabytes) {
    TRefPtr<Dom::CDocumentFactory> factory(new Dom::CDocumentFactory(1));
    factory->CreateDocument(document);
    TRefPtr<Dom::CDocumentBuilder> builder;
    Dom::CDocumentBuilder::Create(document, nullptr, nullptr, builder);
    builder->StartDocument();
    builder->StartElement(u"catalog");
    long bytes = 0, items = 0;
    while (bytes < megabytes * 1000000L) bytes += AddItem(builder, items++);
    builder->EndElement();
    builder->EndDocument();
    return items;
}

double Measure(Xpath::CContext* context, const Xpath::CExpression* tree, std::string& result) {
    double best = 1e30;
    for (int round = 0; round < 3; ++round) {
        auto start = std::chrono::steady_clock::now();
        TRefPtr<Xpath::CValue> value;
        tree->Evaluate(value, context);
        if (value->GetType() == Xpath::TypeNodeSet) {
            TRefPtr<Xpath::CNodeIterator> iterator;
            value->GetNodeSet()->CreateIterator(iterator);
            long count = 0;
            for (; iterator->Current(); iterator->Next()) ++count;
            result = std::to_string(count) + " nodes";
        } else {
            result = Core::ToUtf8(Xpath::CConverter(context).ToString(value));
        }
        std::chrono::duration<double, std::milli> elapsed = std::chrono::steady_clock::now() - start;
        if (elapsed.count() < best) best = elapsed.count();
    }
    return best;
}

}  // namespace

int main(int argc, char** argv) {
    long megabytes = argc > 1 ? std::atol(argv[1]) : 10;
    Dom::TNodeRef document;
    auto start = std::chrono::steady_clock::now();
    long items = BuildDocument(document, megabytes);
    std::chrono::duration<double, std::milli> built = std::chrono::steady_clock::now() - start;
    std::printf("document: %ld MB, %ld items, built in %.0f ms\n", megabytes, items, built.count());

    TRefPtr<Xpath::CNodeSet> root(new Xpath::CSingleNodeSet(document));
    TRefPtr<Xpath::CNodeIterator> iterator;
    root->CreateIterator(iterator);
    TRefPtr<Xpath::CContext> context(new Xpath::CContext(iterator, nullptr, new Xpath::CCoreFunctionLibrary(), nullptr,
                                                         new Xpath::CDocumentNodeOrder(),
                                                         new Xpath::CDefaultExtensionTypes()));
    const char* expressions[] = {
        "count(//*)",
        "count(/catalog/item/tags/tag)",
        "//item[@id='i4242']",
        "count(//name | //value)",
        "count(/catalog/item[position() mod 10 = 0])",
        "/catalog/item[position() = last()]/name",
        "sum(//value)",
        "count(//*[starts-with(translate(name(), 'aeiou', 'AEIOU'), 'nAm')])",
        "count(//*[string-length(normalize-space(concat(name(), ' ', substring(., 2, 5)))) > 8])",
    };
    for (const char* expression : expressions) {
        if (argc > 2 && std::string(argv[2]) != expression) continue;
        Xpath::CParser parser;
        TRefPtr<Xpath::CExpression> tree;
        parser.Parse(tree, Core::WidenLatin1(expression));
        std::string result;
        double milliseconds = Measure(context, tree, result);
        std::printf("%9.1f ms  %-90s %s\n", milliseconds, expression, result.c_str());
    }
    return 0;
}
