// Parsing a document shaped like the host's profile (many Tool elements with attributes and
// entities, one list of recent files), and the walk that finds that list. The same bytes go
// through libxml2 and pugixml in the same run; MB/s are of the UTF-8 bytes.

#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>

#include "foundation/no_case.h"
#include "foundation/text_encoding.h"
#include "foundation/xml/xml_document.h"

#ifdef TABROW_HAVE_LIBXML2
#include <libxml/parser.h>
#include <libxml/tree.h>
#endif
#ifdef TABROW_HAVE_PUGIXML
#include <pugixml.hpp>
#endif

namespace {

constexpr const char* kSheetSetTool = "{BEBBB318-2898-4C03-ADA2-360DC6B7AA69}";
constexpr int kRecentFiles = 12;

std::string ProfileDocument(std::size_t size) {
    std::string out =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<StorageRoot>\r\n<AcApData>\r\n"
        "<AdUiTools>\r\n<ToolsInfo>\r\n";
    const std::string tail = "</ToolsInfo>\r\n</AdUiTools>\r\n</AcApData>\r\n</StorageRoot>\r\n";
    std::string recent =
        "  <Tool CLSID=\"{bebbb318-2898-4c03-ada2-360dc6b7aa69}\" "
        "Name=\"Sheet Set Manager\">\r\n    <MRU_FILES>\r\n";
    for (int i = 0; i < kRecentFiles; ++i)
        recent += "      <MRU_FILE fileName=\"C:\\Projects\\Tower &amp; Annex\\set" +
                  std::to_string(i) + ".dst\"/>\r\n";
    recent += "    </MRU_FILES>\r\n  </Tool>\r\n";
    char tool[512];
    for (int i = 0; out.size() + recent.size() + tail.size() < size; ++i) {
        std::snprintf(tool, sizeof tool,
                      "  <Tool CLSID=\"{%08X-1A2B-4C3D-8E9F-%012X}\" Name=\"Palette &amp; "
                      "Tool %d\" Desc=\"&lt;draw&gt; caf&#233; &quot;%d&quot;\" Visible=\"1\">"
                      "\r\n    <Settings Dock=\"left\" Width=\"%d\"/>\r\n  </Tool>\r\n",
                      static_cast<unsigned>(i * 2654435761u), i, i, i % 97, 200 + i % 300);
        out += tool;
        if (i == 40)  // not at the front: the walk has to pass many tools
            out += "  <Group Name=\"x\"/>\r\n";
    }
    // The list stands last, so the walk passes every tool.
    return out + recent + tail;
}

const std::string& Document(std::size_t mebibytes) {
    static std::map<std::size_t, std::string> documents;
    auto& document = documents[mebibytes];
    if (document.empty())
        document = ProfileDocument(mebibytes << 20);
    return document;
}

void SetRate(benchmark::State& state, std::size_t bytes) {
    state.counters["MB/s"] = benchmark::Counter(
        static_cast<double>(bytes) * static_cast<double>(state.iterations()) / 1e6,
        benchmark::Counter::kIsRate);
}

int WalkOurs(XmlDocument& doc) {
    if (!doc.FindSibling(L"StorageRoot"))
        return 0;
    for (const wchar_t* level : {L"AcApData", L"AdUiTools", L"ToolsInfo"}) {
        if (!doc.FindChild(level) || !doc.Descend())
            return 0;
    }
    const std::wstring wanted = FromUtf8(kSheetSetTool);
    bool found = false;
    while (!found && doc.FindChild(L"Tool"))
        found = EqualNoCase(doc.Attribute(doc.ChildIndex(), L"CLSID"), wanted);
    if (!found || !doc.Descend() || !doc.FindChild(L"MRU_FILES") || !doc.Descend())
        return 0;
    int files = 0;
    while (doc.FindChild(L"MRU_FILE"))
        files += !doc.Attribute(doc.ChildIndex(), L"fileName").empty();
    return files;
}

// One document object parses again and again, so its text buffer is reused, as the other
// parsers' buffers are recycled by the allocator between their runs.
void OursParse(benchmark::State& state) {
    const std::string& bytes = Document(state.range(0));
    const std::wstring text = FromUtf8(bytes);
    XmlDocument doc;
    for (auto _ : state)
        benchmark::DoNotOptimize(doc.Parse(text.c_str()));
    SetRate(state, bytes.size());
}

// A new document each time: the wide text of a large file (four bytes a character here) is
// beyond what the allocator recycles, so this includes fresh pages from the system.
void OursParseFresh(benchmark::State& state) {
    const std::string& bytes = Document(state.range(0));
    const std::wstring text = FromUtf8(bytes);
    for (auto _ : state) {
        XmlDocument doc;
        benchmark::DoNotOptimize(doc.Parse(text.c_str()));
    }
    SetRate(state, bytes.size());
}

void OursDecodeAndParse(benchmark::State& state) {
    const std::string& bytes = Document(state.range(0));
    for (auto _ : state) {
        XmlDocument doc;
        benchmark::DoNotOptimize(doc.Parse(FromUtf8(bytes)));
    }
    SetRate(state, bytes.size());
}

void OursParseAndWalk(benchmark::State& state) {
    const std::string& bytes = Document(state.range(0));
    const std::wstring text = FromUtf8(bytes);
    XmlDocument doc;
    for (auto _ : state) {
        doc.Parse(text.c_str());
        if (WalkOurs(doc) != kRecentFiles)
            state.SkipWithError("walk missed the recent files");
    }
    SetRate(state, bytes.size());
}

#ifdef TABROW_HAVE_LIBXML2
xmlNodePtr LibxmlChild(xmlNodePtr parent, const char* name) {
    for (xmlNodePtr child = parent ? parent->children : nullptr; child; child = child->next) {
        if (child->type == XML_ELEMENT_NODE && xmlStrEqual(child->name, BAD_CAST name))
            return child;
    }
    return nullptr;
}

int WalkLibxml(xmlDocPtr doc) {
    xmlNodePtr node = xmlDocGetRootElement(doc);
    for (const char* level : {"AcApData", "AdUiTools", "ToolsInfo"})
        node = LibxmlChild(node, level);
    if (!node)
        return 0;
    for (xmlNodePtr tool = node->children; tool; tool = tool->next) {
        if (tool->type != XML_ELEMENT_NODE || !xmlStrEqual(tool->name, BAD_CAST "Tool"))
            continue;
        xmlChar* id = xmlGetProp(tool, BAD_CAST "CLSID");
        const bool match = id && xmlStrcasecmp(id, BAD_CAST kSheetSetTool) == 0;
        xmlFree(id);
        if (!match)
            continue;
        int files = 0;
        for (xmlNodePtr file = LibxmlChild(tool, "MRU_FILES")->children; file; file = file->next) {
            if (file->type != XML_ELEMENT_NODE)
                continue;
            xmlChar* name = xmlGetProp(file, BAD_CAST "fileName");
            files += name != nullptr;
            xmlFree(name);
        }
        return files;
    }
    return 0;
}

xmlDocPtr LibxmlRead(const std::string& bytes) {
    return xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), "profile.aws", "UTF-8",
                         XML_PARSE_NOERROR | XML_PARSE_NOWARNING | XML_PARSE_NONET);
}

void Libxml2Parse(benchmark::State& state) {
    const std::string& bytes = Document(state.range(0));
    for (auto _ : state)
        xmlFreeDoc(LibxmlRead(bytes));
    SetRate(state, bytes.size());
}

void Libxml2ParseAndWalk(benchmark::State& state) {
    const std::string& bytes = Document(state.range(0));
    for (auto _ : state) {
        xmlDocPtr doc = LibxmlRead(bytes);
        if (WalkLibxml(doc) != kRecentFiles)
            state.SkipWithError("walk missed the recent files");
        xmlFreeDoc(doc);
    }
    SetRate(state, bytes.size());
}
#endif

#ifdef TABROW_HAVE_PUGIXML
int WalkPugixml(const pugi::xml_document& doc) {
    const pugi::xml_node tools =
        doc.child("StorageRoot").child("AcApData").child("AdUiTools").child("ToolsInfo");
    for (const pugi::xml_node tool : tools.children("Tool")) {
        if (!EqualNoCase(FromUtf8(tool.attribute("CLSID").value()), FromUtf8(kSheetSetTool)))
            continue;
        int files = 0;
        for (const pugi::xml_node file : tool.child("MRU_FILES").children("MRU_FILE"))
            files += *file.attribute("fileName").value() != '\0';
        return files;
    }
    return 0;
}

void PugixmlParse(benchmark::State& state) {
    const std::string& bytes = Document(state.range(0));
    for (auto _ : state) {
        pugi::xml_document doc;
        benchmark::DoNotOptimize(doc.load_buffer(bytes.data(), bytes.size()));
    }
    SetRate(state, bytes.size());
}

void PugixmlParseAndWalk(benchmark::State& state) {
    const std::string& bytes = Document(state.range(0));
    for (auto _ : state) {
        pugi::xml_document doc;
        doc.load_buffer(bytes.data(), bytes.size());
        if (WalkPugixml(doc) != kRecentFiles)
            state.SkipWithError("walk missed the recent files");
    }
    SetRate(state, bytes.size());
}
#endif

// Keeps each run's MB/s so that the ratios can be printed after the usual table.
class RatioReporter : public benchmark::ConsoleReporter {
public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            const auto it = run.counters.find("MB/s");
            if (it != run.counters.end() && !run.error_occurred)
                m_rates[run.benchmark_name()] = it->second.value;
        }
    }

    void PrintRatios() const {
        std::printf("\nMB/s of the UTF-8 bytes, and ratios (ours over the other parser):\n");
        for (const char* size : {"1", "10"}) {
            for (const char* kind : {"Parse", "ParseAndWalk"}) {
                const double ours = Rate(std::string("Ours") + kind, size);
                std::printf("%2s MiB %-13s ours %8.1f", size, kind, ours);
                for (const char* other : {"Libxml2", "Pugixml"}) {
                    const double theirs = Rate(std::string(other) + kind, size);
                    if (theirs > 0)
                        std::printf("  %s %7.1f (x%.2f)", other, theirs, ours / theirs);
                }
                std::printf("\n");
            }
            std::printf("%2s MiB %-13s ours %8.1f (a new document each time)\n", size, "ParseFresh",
                        Rate("OursParseFresh", size));
            std::printf("%2s MiB %-13s ours %8.1f (UTF-8 decoding included)\n", size, "DecodeParse",
                        Rate("OursDecodeAndParse", size));
        }
    }

private:
    double Rate(const std::string& name, const char* mebibytes) const {
        const auto it = m_rates.find(name + "/" + mebibytes);
        return it == m_rates.end() ? 0.0 : it->second;
    }
    std::map<std::string, double> m_rates;
};

}  // namespace

#define TABROW_XML_BENCH(function) \
    BENCHMARK(function)->Arg(1)->Arg(10)->Unit(benchmark::kMillisecond)

TABROW_XML_BENCH(OursParse);
TABROW_XML_BENCH(OursParseFresh);
TABROW_XML_BENCH(OursDecodeAndParse);
TABROW_XML_BENCH(OursParseAndWalk);
#ifdef TABROW_HAVE_LIBXML2
TABROW_XML_BENCH(Libxml2Parse);
TABROW_XML_BENCH(Libxml2ParseAndWalk);
#endif
#ifdef TABROW_HAVE_PUGIXML
TABROW_XML_BENCH(PugixmlParse);
TABROW_XML_BENCH(PugixmlParseAndWalk);
#endif

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.PrintRatios();
    benchmark::Shutdown();
    return 0;
}
