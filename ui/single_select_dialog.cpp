#include "ui/single_select_dialog.h"

// NX has no UIStyler item for a free-standing list picker; the platform stand-in shows it
// through its presenter.
#include <nxsim/presenter.h>

namespace KivNX {
namespace UI {

int SingleSelectDialog::show(const std::string& title, const std::string& prompt,
                             const std::vector<std::string>& items, int initialSelection) {
    const int chosen = nxsim::pickFromList(title, prompt, items, initialSelection);
    return chosen < 0 ? -1 : chosen;
}

} // namespace UI
} // namespace KivNX
