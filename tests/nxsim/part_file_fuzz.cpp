// libFuzzer target: the part reader must refuse any input with a PartFileError that names the
// file, or read it; a part it reads has no tag twice and its current drawing is one of its
// drawings.
#include <nxsim/part_file.h>

#include <cstdint>
#include <cstdlib>
#include <set>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(reinterpret_cast<const char*>(data), size);
    nxsim::SimPart part;
    try {
        part = nxsim::parsePartFile(text, "fuzz.prt");
    } catch (const nxsim::PartFileError& error) {
        if (std::string(error.what()).rfind("fuzz.prt:", 0) != 0) {
            std::abort();
        }
        return 0;
    }
    if (part.currentDrawing < -1 || part.currentDrawing >= static_cast<int>(part.drawings.size())) {
        std::abort();
    }
    std::set<unsigned int> tags;
    for (const nxsim::SimObject& object : part.objects) {
        if (object.tag < 1 || object.tag > 0xFFFF || !tags.insert(object.tag).second) {
            std::abort();
        }
    }
    return 0;
}
