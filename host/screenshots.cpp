#include "screenshots.h"

#include <QApplication>
#include <QPixmap>
#include <QWidget>

#include <boost/filesystem/operations.hpp>

#include <cctype>
#include <cstdio>
#include <stdexcept>

namespace fs = boost::filesystem;

namespace QorfmtHost {

Screenshots::Screenshots(fs::path directory) : m_directory(std::move(directory)) {}

fs::path Screenshots::save(QWidget& window, const std::string& name) {
    if (!enabled()) {
        return {};
    }
    boost::system::error_code ec;
    fs::create_directories(m_directory, ec);
    if (ec) {
        throw std::runtime_error(m_directory.string() + ": cannot create the directory (" +
                                 ec.message() + ")");
    }
    char number[16];
    std::snprintf(number, sizeof number, "%03d_", ++m_count);
    fs::path file = m_directory / (number + fileNamePart(name) + ".png");
    // Pending layout and polish must be done, or the picture shows a half-built window.
    QApplication::processEvents();
    QPixmap picture = window.grab();
    if (picture.isNull() || !picture.save(QString::fromStdString(file.string()), "PNG")) {
        throw std::runtime_error(file.string() + ": cannot write the screenshot");
    }
    m_files.push_back(file);
    return file;
}

std::string fileNamePart(const std::string& name) {
    std::string part;
    for (char c : name) {
        const auto u = static_cast<unsigned char>(c);
        part += std::isalnum(u) || c == '.' || c == '_' || c == '-' ? c : '_';
    }
    return part.empty() ? std::string("window") : part;
}

} // namespace QorfmtHost
