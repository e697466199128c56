// libFuzzer target: the .dlg reader must refuse any input with a DlgError or read it; what it
// reads must hold together: every named element is found by its name, and every option menu and
// radio box has a sensitivity for each entry.
#include <nxsim/dlg.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

void check(const nxsim::DialogLayout& layout, const std::vector<nxsim::DlgElement>& elements) {
    for (const nxsim::DlgElement& element : elements) {
        if (!element.name.empty() && layout.find(element.name) != &element) {
            std::abort();
        }
        if ((element.kind == nxsim::ItemKind::OptionMenu ||
             element.kind == nxsim::ItemKind::RadioBox) &&
            element.entries.size() != element.entrySensitive.size()) {
            std::abort();
        }
        check(layout, element.children);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    try {
        const nxsim::DialogLayout layout = nxsim::parseDialogLayout(text, "fuzz.dlg");
        check(layout, layout.elements);
    } catch (const nxsim::DlgError& error) {
        if (std::string(error.what()).rfind("fuzz.dlg:", 0) != 0) {
            std::abort();
        }
    }
    return 0;
}
