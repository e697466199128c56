#include "ui/single_select_dialog.h"

#include <uf_ui.h>

#include <algorithm>
#include <cstring>

namespace KivNX {
namespace UI {

namespace {

// NX's menu (uc1603) holds at most 14 entries of 37 characters. A longer list is shown in pages
// of 13 entries and a 14th that turns to the next page, the last page turning back to the first.
constexpr int kMenuEntries = 14;
constexpr int kPageEntries = kMenuEntries - 1;
constexpr std::size_t kEntryLength = 37;
constexpr char kMoreEntry[] = "More...";

} // namespace

int SingleSelectDialog::show(const std::string& title, const std::string& prompt,
                             const std::vector<std::string>& items, int initialSelection) {
    // An empty list is still shown: the user sees that nothing was found, and cancels.
    const int count = static_cast<int>(items.size());
    std::string cue = prompt;
    UF_UI_set_prompt(cue.data());
    const bool paged = count > kMenuEntries;
    const int pageSize = paged ? kPageEntries : kMenuEntries;
    int first = initialSelection >= 0 && initialSelection < count
                    ? initialSelection / pageSize * pageSize
                    : 0;
    for (;;) {
        const int shown = std::min(pageSize, count - first);
        char entries[kMenuEntries][kEntryLength + 1] = {};
        for (int i = 0; i < shown; ++i) {
            std::strncpy(entries[i], items[static_cast<std::size_t>(first + i)].c_str(),
                         kEntryLength);
        }
        int entryCount = shown;
        if (paged) {
            std::strncpy(entries[entryCount++], kMoreEntry, kEntryLength);
        }
        const int preselected = initialSelection >= first && initialSelection < first + shown
                                    ? initialSelection - first + 1
                                    : 0;
        const int response = uc1603(title.c_str(), preselected, entries, entryCount);
        const int entry = response - 5;
        if (entry < 0 || entry >= entryCount) {
            return -1;
        }
        if (entry < shown) {
            return first + entry;
        }
        first = first + pageSize < count ? first + pageSize : 0;
    }
}

} // namespace UI
} // namespace KivNX
