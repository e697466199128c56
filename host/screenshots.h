#pragma once

#include <QString>

#include <boost/filesystem/path.hpp>

#include <string>
#include <vector>

class QWidget;

namespace QorfmtHost {

/// Saves numbered PNG pictures of windows into one directory: 001_NAME.png, 002_NAME.png, ...
class Screenshots {
public:
    /// An empty directory saves nothing. The directory is created on the first picture.
    explicit Screenshots(boost::filesystem::path directory = {});

    bool enabled() const { return !m_directory.empty(); }
    /// Renders `window` as it is now and saves it named after `name`; returns the file written,
    /// empty when disabled. Throws std::runtime_error naming the file when it cannot be written.
    boost::filesystem::path save(QWidget& window, const std::string& name);
    /// Every file written so far, in order.
    const std::vector<boost::filesystem::path>& files() const { return m_files; }

private:
    boost::filesystem::path m_directory;
    int m_count = 0;
    std::vector<boost::filesystem::path> m_files;
};

/// `name` reduced to letters, digits, '.', '_' and '-' so that it makes a file name.
std::string fileNamePart(const std::string& name);

} // namespace QorfmtHost
