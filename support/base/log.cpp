#include "base/log.h"

#include "base/write_signals.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <fstream>
#include <iostream>

namespace Base {
namespace log {

namespace {

struct Destination {
    std::string where;
    bool toStderr = false;
    std::unique_ptr<std::ofstream> file;

    bool active() const { return toStderr || file; }
};

Destination& storage() {
    static Destination destination;
    return destination;
}

void apply(Destination& d, const std::string& where) {
    d.where = where;
    d.toStderr = false;
    d.file.reset();
    if (where.empty() || where == "none") {
        return;
    }
    if (where == "stderr") {
        d.toStderr = true;
        return;
    }
    auto file = std::make_unique<std::ofstream>(where, std::ios::app);
    if (!*file) {
        std::cerr << "qorfmt: cannot open log file '" << where << "': " << std::strerror(errno)
                  << "; logging is off\n";
        return;
    }
    d.file = std::move(file);
}

Destination& current() {
    static const bool initialised = [] {
        const char* fromEnvironment = std::getenv("QORFMT_LOG");
        apply(storage(), fromEnvironment ? fromEnvironment : "");
        return true;
    }();
    (void)initialised;
    return storage();
}

std::string timestamp() {
    using namespace std::chrono;
    const auto now = system_clock::now();
    const std::time_t seconds = system_clock::to_time_t(now);
    const auto millis = duration_cast<milliseconds>(now.time_since_epoch()).count() % 1000;
    std::tm utc{};
    gmtime_r(&seconds, &utc);
    char text[64];
    std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%02d.%03dZ", utc.tm_year + 1900,
                  utc.tm_mon + 1, utc.tm_mday, utc.tm_hour, utc.tm_min, utc.tm_sec,
                  static_cast<int>(millis));
    return text;
}

} // namespace

void setDestination(const std::string& where) {
    apply(current(), where);
}

std::string destination() {
    return current().where;
}

Logger::Logger(std::string name) : m_name(std::move(name)) {}

bool Logger::enabled() const {
    return !m_switchedOff && current().active();
}

void Logger::write(const std::string& text) const {
    if (!enabled()) {
        return;
    }
    const std::string line = timestamp() + " [" + m_name + "] " + text + "\n";
    // A log file at the size limit, or a closed standard error, must not end the program.
    const WriteSignalsHeld signalsHeld;
    Destination& d = current();
    if (d.toStderr) {
        std::cerr << line << std::flush;
    } else {
        *d.file << line << std::flush;
    }
}

void LoggerStream::LineBuffer::flushPartialLine() {
    if (!m_line.empty()) {
        m_logger.write(m_line);
        m_line.clear();
    }
}

LoggerStream::LineBuffer::int_type LoggerStream::LineBuffer::overflow(int_type c) {
    if (traits_type::eq_int_type(c, traits_type::eof())) {
        return traits_type::not_eof(c);
    }
    const char ch = traits_type::to_char_type(c);
    if (ch == '\n') {
        m_logger.write(m_line);
        m_line.clear();
    } else {
        m_line += ch;
    }
    return c;
}

std::streamsize LoggerStream::LineBuffer::xsputn(const char* s, std::streamsize n) {
    for (std::streamsize i = 0; i < n; ++i) {
        overflow(traits_type::to_int_type(s[i]));
    }
    return n;
}

LoggerStream::LoggerStream(Logger& logger) : std::ostream(nullptr), m_buffer(logger) {
    rdbuf(&m_buffer);
}

LoggerStream::~LoggerStream() {
    m_buffer.flushPartialLine();
}

} // namespace log
} // namespace Base
