// libFuzzer target: the PO reader must refuse any input with an InputError that names the file,
// or read it.
#include "po_catalog.h"

#include "site.h"

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    try {
        QorfmtCli::parsePoCatalog(std::string(reinterpret_cast<const char*>(data), size),
                                  "fuzz.po");
    } catch (const QorfmtCli::InputError& error) {
        if (std::string(error.what()).rfind("fuzz.po", 0) != 0) {
            std::abort();
        }
    }
    return 0;
}
