#include "text_diff.h"

#include <algorithm>
#include <vector>

namespace QorfmtCli {

namespace {

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    std::string::size_type start = 0;
    while (start < text.size()) {
        const std::string::size_type end = text.find('\n', start);
        if (end == std::string::npos) {
            lines.push_back(text.substr(start));
            break;
        }
        lines.push_back(text.substr(start, end - start + 1));
        start = end + 1;
    }
    return lines;
}

enum class Op { Same, Remove, Add };

// Myers' shortest edit script; an empty result when it needs more than `limit` edits.
std::vector<Op> editScript(const std::vector<std::string>& a, const std::vector<std::string>& b,
                           int limit) {
    const int n = static_cast<int>(a.size());
    const int m = static_cast<int>(b.size());
    const int offset = n + m + 1;
    std::vector<int> v(static_cast<std::size_t>(2 * offset + 1), 0);
    std::vector<std::vector<int>> trace;
    for (int d = 0; d <= std::min(n + m, limit); ++d) {
        trace.push_back(v);
        for (int k = -d; k <= d; k += 2) {
            const auto at = [&](int diagonal) {
                return static_cast<std::size_t>(diagonal + offset);
            };
            int x = (k == -d || (k != d && v[at(k - 1)] < v[at(k + 1)])) ? v[at(k + 1)]
                                                                         : v[at(k - 1)] + 1;
            int y = x - k;
            while (x < n && y < m &&
                   a[static_cast<std::size_t>(x)] == b[static_cast<std::size_t>(y)]) {
                ++x;
                ++y;
            }
            v[at(k)] = x;
            if (x >= n && y >= m) {
                // Walk back through the trace.
                std::vector<Op> ops;
                int cx = n;
                int cy = m;
                for (int e = d; e > 0; --e) {
                    const std::vector<int>& before = trace[static_cast<std::size_t>(e)];
                    const int ck = cx - cy;
                    const bool down =
                        ck == -e || (ck != e && before[at(ck - 1)] < before[at(ck + 1)]);
                    const int pk = down ? ck + 1 : ck - 1;
                    const int px = before[at(pk)];
                    const int py = px - pk;
                    while (cx > px + (down ? 0 : 1) && cy > py + (down ? 1 : 0)) {
                        ops.push_back(Op::Same);
                        --cx;
                        --cy;
                    }
                    ops.push_back(down ? Op::Add : Op::Remove);
                    cx = px;
                    cy = py;
                }
                while (cx > 0 && cy > 0) {
                    ops.push_back(Op::Same);
                    --cx;
                    --cy;
                }
                std::reverse(ops.begin(), ops.end());
                return ops;
            }
        }
    }
    return {};
}

std::string range(int start, int count) {
    // A hunk's range: "START,COUNT", the start being the line before when the count is 0.
    return std::to_string(count == 0 ? start - 1 : start) + "," + std::to_string(count);
}

std::string withNewline(const std::string& line) {
    return !line.empty() && line.back() == '\n' ? line : line + "\n\\ No newline at end of file\n";
}

} // namespace

std::string unifiedDiff(const std::string& before, const std::string& after,
                        const std::string& oldName, const std::string& newName) {
    if (before == after) {
        return "";
    }
    const std::vector<std::string> a = linesOf(before);
    const std::vector<std::string> b = linesOf(after);
    // Each step of the search keeps a copy of its diagonals: bound the steps by the memory.
    const int width = 2 * static_cast<int>(a.size() + b.size()) + 3;
    std::vector<Op> ops = editScript(a, b, std::min(2000, std::max(50, 8000000 / width)));
    if (ops.empty()) {
        ops.assign(a.size(), Op::Remove);
        ops.insert(ops.end(), b.size(), Op::Add);
    }
    constexpr int kContext = 3;
    std::string text = "--- " + oldName + "\n+++ " + newName + "\n";
    // Positions in a and b before each op.
    std::vector<int> ai(ops.size() + 1);
    std::vector<int> bi(ops.size() + 1);
    for (std::size_t i = 0; i < ops.size(); ++i) {
        ai[i + 1] = ai[i] + (ops[i] != Op::Add ? 1 : 0);
        bi[i + 1] = bi[i] + (ops[i] != Op::Remove ? 1 : 0);
    }
    std::size_t i = 0;
    while (i < ops.size()) {
        if (ops[i] == Op::Same) {
            ++i;
            continue;
        }
        // A hunk: from kContext before this change to kContext after the last change that
        // lies within 2 * kContext of the one before it.
        const std::size_t start = i >= kContext ? i - kContext : 0;
        std::size_t end = i;
        std::size_t sameRun = 0;
        for (std::size_t j = i; j < ops.size(); ++j) {
            if (ops[j] == Op::Same) {
                if (++sameRun > 2 * kContext) {
                    break;
                }
            } else {
                sameRun = 0;
                end = j;
            }
        }
        const std::size_t stop = std::min(ops.size(), end + 1 + kContext);
        text += "@@ -" + range(ai[start] + 1, ai[stop] - ai[start]) + " +" +
                range(bi[start] + 1, bi[stop] - bi[start]) + " @@\n";
        for (std::size_t j = start; j < stop; ++j) {
            switch (ops[j]) {
            case Op::Same:
                text += " " + withNewline(a[static_cast<std::size_t>(ai[j])]);
                break;
            case Op::Remove:
                text += "-" + withNewline(a[static_cast<std::size_t>(ai[j])]);
                break;
            case Op::Add:
                text += "+" + withNewline(b[static_cast<std::size_t>(bi[j])]);
                break;
            }
        }
        i = stop;
    }
    return text;
}

int firstCommentLine(const std::string& xml) {
    // '<' cannot stand in an attribute value or text of a document: "<!--" opens a comment.
    const std::string::size_type at = xml.find("<!--");
    if (at == std::string::npos) {
        return 0;
    }
    return 1 + static_cast<int>(
                   std::count(xml.begin(), xml.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
}

} // namespace QorfmtCli
