#pragma once

#include <nxsim/dlg.h>
#include <nxsim/presenter.h>

#include <boost/filesystem/path.hpp>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace nxsim {

class RuntimeDialog;

/// A message box as it was shown.
struct ShownMessage {
    MessageKind kind;
    std::string title;
    std::string text;
};

/// A list picker as it was shown, with the row the user chose (-1 cancel).
struct ShownPicker {
    std::string title;
    std::string prompt;
    std::vector<std::string> items;
    int chosen;
};

/// A control the program asked a shown dialog for (`Dialog::Get...`), with the kind it asked for.
struct BoundControl {
    std::string dialog; ///< the dialog's journal name
    std::string name;
    ItemKind kind;
};

// Observation: what the program did to the platform, for tests and journal expectations.

/// Every control asked for since the last reset, in order, also those refused.
std::vector<BoundControl> boundControls();

/// Message boxes in the order shown.
std::vector<ShownMessage> shownMessages();
std::vector<ShownPicker> shownPickers();
/// The listing window's whole text: every WriteLine with its line break.
std::string listingText();
bool listingOpen();
/// The cue line (the last prompt set).
std::string cueLine();
/// How many prompts were set since the platform started, so that a host can tell a prompt set
/// again with the same text from one left standing.
std::uint64_t cueLineSets();
/// Every busy-indicator toggle (1 on, 0 off) since the last takeStoplightToggles().
std::vector<int> stoplightToggles();
std::vector<int> takeStoplightToggles();
/// Called at once with every busy-indicator toggle (true: on), so that a host can show a busy
/// cursor while a handler runs; an empty function removes it. Kept across reset().
void setStoplightListener(std::function<void(bool on)> listener);
/// The UF_ functions and fallible NX Open calls made, by name, in order.
std::vector<std::string> callLog();
/// How often UF_initialize succeeded minus how often UF_terminate did.
int initializeDepth();
/// Whether an object is highlighted.
bool highlighted(unsigned int tag);
/// The file of the display part, empty when none.
std::string displayPartFile();
/// The file of the work part, empty when none.
std::string workPartFile();
/// Files of every loaded part, in load order.
std::vector<std::string> loadedPartFiles();
/// Dialogs being shown, outermost first.
std::vector<RuntimeDialog*> shownDialogs();

// Fault injection.

/// Makes the NX call `call` ("UF_initialize", "UF_DRAW_ask_drawing_info", "OpenDisplay", ...)
/// fail with `errorCode`: a UF_ function returns the code, an NX Open method throws
/// NXException::Create(errorCode). `times` calls fail, then it works again; 0 means every call.
void injectFault(const std::string& call, int errorCode, int times = 0);
void clearFaults();

/// Forgets everything: parts, display and work part, listing window, cue line, toggles, messages,
/// call log, highlights, faults and the initialize depth. The presenter and resource path stay.
void reset();

} // namespace nxsim
