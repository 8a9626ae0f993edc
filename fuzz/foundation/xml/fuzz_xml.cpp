// Any bytes parse without a crash; a failed parse leaves a document in which nothing is found,
// and a successful one can be walked from end to end.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "foundation/text_encoding.h"
#include "foundation/xml/xml_document.h"

namespace {

void Check(bool condition) {
    if (!condition)
        std::abort();
}

// Visits every element without recursion, reading names and attributes on the way.
void WalkAll(XmlDocument& doc) {
    Check(doc.FindSibling());
    for (;;) {
        Check(!doc.TagName().empty());
        doc.Attribute(doc.AttributeName(0).c_str());
        doc.Attribute(L"a");
        if (doc.FindChild() && doc.Descend())
            continue;
        // No more children here: climb until a level has one more.
        while (!doc.FindChild()) {
            if (!doc.Ascend())
                return;
        }
        Check(doc.Descend());
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    XmlDocument doc;
    doc.MarkPosition(L"start");
    if (!doc.Parse(FromUtf8(bytes))) {
        Check(!doc.HasRoot());
        Check(!doc.FindSibling() && !doc.FindChild() && !doc.Descend() && !doc.Ascend());
        Check(doc.TagName().empty() && doc.Attribute(1, L"a").empty());
        return 0;
    }
    Check(doc.HasRoot());
    const XmlDocument copy(doc);
    WalkAll(doc);
    XmlDocument again(copy);
    Check(again.FindSibling() && again.MarkPosition(L"root") && again.ReturnToPosition(L"root"));
    return 0;
}
