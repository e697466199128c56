#include "finding.h"

#include <nlohmann/json.hpp>

#include <cstdio>

namespace QorfmtCli {

using QorLint::Finding;
using QorLint::severityName;

namespace {

using Json = nlohmann::ordered_json;

// Invalid UTF-8 in a message (a document's bytes) becomes U+FFFD rather than failing the report.
std::string dump(const Json& json, int indent = -1) {
    return json.dump(indent, ' ', false, Json::error_handler_t::replace);
}

// What a workflow command's value or property cannot carry as it is.
std::string githubEscaped(const std::string& text, bool property) {
    std::string out;
    for (const char c : text) {
        switch (c) {
        case '%':
            out += "%25";
            break;
        case '\r':
            out += "%0D";
            break;
        case '\n':
            out += "%0A";
            break;
        case ':':
            out += property ? "%3A" : ":";
            break;
        case ',':
            out += property ? "%2C" : ",";
            break;
        default:
            out += c;
        }
    }
    return out;
}

} // namespace

std::string formatJson(const std::vector<Finding>& findings) {
    if (findings.empty()) {
        return "[]\n";
    }
    std::string text = "[\n";
    for (std::size_t i = 0; i < findings.size(); ++i) {
        const Finding& f = findings[i];
        const Json object = {{"file", f.file},
                             {"line", f.line},
                             {"severity", severityName(f.severity)},
                             {"message", f.message},
                             {"rule", f.rule}};
        text += "  " + dump(object) + (i + 1 < findings.size() ? ",\n" : "\n");
    }
    return text + "]\n";
}

std::string sarifUri(const std::string& file) {
    std::string uri = !file.empty() && file[0] == '/' ? "file://" : "";
    for (const char c : file) {
        const auto byte = static_cast<unsigned char>(c);
        const bool plain = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') ||
                           (c >= '0' && c <= '9') || c == '-' || c == '.' || c == '_' || c == '~' ||
                           c == '/';
        if (plain) {
            uri += c;
        } else {
            char escaped[4];
            std::snprintf(escaped, sizeof escaped, "%%%02X", byte);
            uri += escaped;
        }
    }
    return uri;
}

std::string formatSarif(const std::vector<Finding>& findings,
                        const std::vector<QorLint::LintRule>& rules, const std::string& version) {
    Json ruleList = Json::array();
    for (const QorLint::LintRule& rule : rules) {
        ruleList.push_back({{"id", rule.name}, {"shortDescription", {{"text", rule.summary}}}});
    }
    Json results = Json::array();
    for (const Finding& f : findings) {
        Json result = {{"ruleId", f.rule}};
        for (std::size_t i = 0; i < rules.size(); ++i) {
            if (f.rule == rules[i].name) {
                result["ruleIndex"] = i;
            }
        }
        result["level"] = severityName(f.severity);
        result["message"] = {{"text", f.message}};
        Json physical = {{"artifactLocation", {{"uri", sarifUri(f.file)}}}};
        if (f.line > 0) {
            physical["region"] = {{"startLine", f.line}};
        }
        result["locations"] = Json::array({{{"physicalLocation", physical}}});
        results.push_back(result);
    }
    const Json log = {
        {"$schema", "https://json.schemastore.org/sarif-2.1.0.json"},
        {"version", "2.1.0"},
        {"runs",
         Json::array(
             {{{"tool",
                {{"driver", {{"name", "qorfmt"}, {"version", version}, {"rules", ruleList}}}}},
               {"results", results}}})}};
    return dump(log, 2) + "\n";
}

std::string formatGithub(const std::vector<Finding>& findings) {
    std::string text;
    for (const Finding& f : findings) {
        text +=
            std::string("::") + severityName(f.severity) + " file=" + githubEscaped(f.file, true);
        if (f.line > 0) {
            text += ",line=" + std::to_string(f.line);
        }
        text += ",title=" + githubEscaped("qorfmt lint: " + f.rule, true) +
                "::" + githubEscaped(f.message, false) + "\n";
    }
    return text;
}

} // namespace QorfmtCli
