#include <NXOpen/Session.hxx>

#include "internal.h"
#include "platform_state.h"

#include <nxsim/error_codes.h>

#include <boost/filesystem/operations.hpp>

#include <algorithm>
#include <cstdlib>

namespace fs = boost::filesystem;

namespace NXOpen {

using nxsim::detail::state;

Session* Session::GetSession() {
    static Session* session = new Session();
    return session;
}

PartCollection* Session::Parts() {
    return &m_parts;
}

NXOpen::ListingWindow* Session::ListingWindow() {
    return &m_listingWindow;
}

// ---- ListingWindow ----

void ListingWindow::Open() {
    nxsim::detail::enterMethod("ListingWindow::Open");
    state().listingOpen = true;
}

void ListingWindow::Close() {
    nxsim::detail::enterMethod("ListingWindow::Close");
    state().listingOpen = false;
}

bool ListingWindow::IsOpen() {
    return state().listingOpen;
}

void ListingWindow::WriteLine(const NXString& text) {
    nxsim::detail::enterMethod("ListingWindow::WriteLine");
    if (!state().listingOpen) {
        nxsim::detail::raise(nxsim::ErrorCode::ListingWindowClosed, "WriteLine before Open");
    }
    state().listing += text.GetText();
    state().listing += '\n';
}

// ---- Parts ----

BasePart::~BasePart() = default;

void BasePart::Close(CloseWholeTree, CloseModified, PartCloseResponses*) {
    nxsim::detail::enterMethod("BasePart::Close");
    auto& s = state();
    if (m_part->closed) {
        nxsim::detail::raise(nxsim::ErrorCode::PartClosed, m_part->file.string());
    }
    auto it = std::find_if(s.parts.begin(), s.parts.end(),
                           [this](const auto& p) { return p.sim.get() == m_part; });
    m_part->closed = true;
    if (s.display && &nxsim::detail::simPart(*s.display) == m_part) {
        s.display = nullptr;
    }
    if (s.work && &nxsim::detail::simPart(*s.work) == m_part) {
        s.work = nullptr;
    }
    for (const auto& object : m_part->objects) {
        s.highlights.erase(object.tag);
    }
    if (it != s.parts.end()) {
        s.closedParts.push_back(std::move(*it));
        s.parts.erase(it);
    }
}

NXString BasePart::FullPath() {
    return NXString(m_part->file.string());
}

Part::Part(nxsim::SimPart* part)
    : BasePart(part), m_sheets(std::make_unique<Drawings::DrawingSheetCollection>(part)) {}

Part::~Part() = default;

Drawings::DrawingSheetCollection* Part::DrawingSheets() {
    if (nxsim::detail::simPart(*this).closed) {
        nxsim::detail::raise(nxsim::ErrorCode::PartClosed,
                             nxsim::detail::simPart(*this).file.string());
    }
    return m_sheets.get();
}

Part* PartCollection::Work() {
    return state().work;
}

Part* PartCollection::Display() {
    return state().display;
}

BasePart* PartCollection::BaseDisplay() {
    return state().display;
}

Part* PartCollection::OpenDisplay(const NXString& file, PartLoadStatus** status) {
    nxsim::detail::enterMethod("OpenDisplay");
    auto& s = state();
    const fs::path path(file.GetText());
    boost::system::error_code ec;
    // Anything else found there is refused by the reader, which says what it is.
    if (!fs::exists(path, ec)) {
        nxsim::detail::raise(nxsim::ErrorCode::FileNotFound, path.string());
    }
    Part* part = nullptr;
    for (auto& loaded : s.parts) {
        if (fs::equivalent(loaded.sim->file, path, ec)) {
            part = loaded.part.get();
        }
    }
    if (!part) {
        nxsim::detail::LoadedPart loaded;
        try {
            loaded.sim = std::make_unique<nxsim::SimPart>(nxsim::readPartFile(path));
        } catch (const nxsim::PartFileError& e) {
            nxsim::detail::raise(nxsim::ErrorCode::NotAPartFile, e.what());
        }
        loaded.sim->tag = s.nextTag++;
        for (auto& drawing : loaded.sim->drawings) {
            drawing.tag = s.nextTag++;
        }
        loaded.part = std::make_unique<Part>(loaded.sim.get());
        part = loaded.part.get();
        s.parts.push_back(std::move(loaded));
    }
    s.display = part;
    s.work = part;
    if (status) {
        *status = new PartLoadStatus();
    }
    return part;
}

PartCollection::SdpsStatus PartCollection::SetDisplay(BasePart* part, bool maintainWorkPart, bool,
                                                      PartLoadStatus** status) {
    nxsim::detail::enterMethod("SetDisplay");
    auto& s = state();
    if (!part) {
        nxsim::detail::raise(nxsim::ErrorCode::InvalidArgument, "SetDisplay without a part");
    }
    if (nxsim::detail::simPart(*part).closed) {
        nxsim::detail::raise(nxsim::ErrorCode::PartClosed,
                             nxsim::detail::simPart(*part).file.string());
    }
    auto* asPart = dynamic_cast<Part*>(part);
    s.display = asPart;
    if (!maintainWorkPart || !s.work) {
        s.work = asPart;
    }
    if (status) {
        *status = new PartLoadStatus();
    }
    return SdpsStatusOk;
}

// ---- Drawings ----

namespace Drawings {

DrawingSheetCollection::DrawingSheetCollection(nxsim::SimPart* part) : m_part(part) {}

DrawingSheetCollection::~DrawingSheetCollection() = default;

DrawingSheet* DrawingSheetCollection::CurrentDrawingSheet() {
    if (m_part->closed) {
        nxsim::detail::raise(nxsim::ErrorCode::PartClosed, m_part->file.string());
    }
    if (m_part->currentDrawing < 0 ||
        m_part->currentDrawing >= static_cast<int>(m_part->drawings.size())) {
        return nullptr;
    }
    if (m_sheets.size() < m_part->drawings.size()) {
        m_sheets.resize(m_part->drawings.size());
    }
    auto index = static_cast<std::size_t>(m_part->currentDrawing);
    if (!m_sheets[index]) {
        m_sheets[index] = std::make_unique<DrawingSheet>(&m_part->drawings[index]);
    }
    return m_sheets[index].get();
}

double DrawingSheet::Length() {
    return m_drawing->length;
}

double DrawingSheet::Height() {
    return m_drawing->height;
}

} // namespace Drawings

LoadOptions* PartCollection::LoadOptions() {
    nxsim::detail::enterMethod("PartCollection::LoadOptions");
    static NXOpen::LoadOptions options;
    return &options;
}

void LoadOptions::GetSearchDirectories(std::vector<NXString>& searchDirectories,
                                       std::vector<bool>& searchSubDirs) {
    nxsim::detail::enterMethod("LoadOptions::GetSearchDirectories");
    searchDirectories.clear();
    searchSubDirs.clear();
    const char* path = std::getenv("QORFMT_SEARCH_PATH");
    const std::string text = path ? path : "";
    std::string::size_type start = 0;
    while (start < text.size()) {
        const auto colon = std::min(text.find(':', start), text.size());
        if (colon > start) {
            searchDirectories.emplace_back(text.substr(start, colon - start));
            searchSubDirs.push_back(false);
        }
        start = colon + 1;
    }
}

} // namespace NXOpen
