// The output of an agent's program, from the pipe to the stored result of the run. The first byte selects the
// agent and the length of the pieces in which the output arrives.

#include "app/agents/ClaudeCodeAdapter.h"
#include "app/agents/CodexAdapter.h"
#include "app/agents/SberatelZprav.h"
#include "app/programs/SberVystupu.h"
#include "foundation/Text.h"
#include "shared/base/Bytes.h"
#include "shared/base/Require.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

using namespace morvex;

namespace {

/// Short, so that the fuzzer produces longer lines, too.
constexpr std::size_t longestLine = 300;

std::vector<std::string> linesOf(std::string_view output, std::size_t pieceLength) {
    std::vector<std::string> lines;
    SberVystupu collector([&lines](std::string_view line) { lines.emplace_back(line); },
                          Capture{.line = longestLine});
    for (auto rest = output; !rest.empty();) {
        const auto piece = rest.substr(0, pieceLength);
        rest.remove_prefix(piece.size());
        collector.addOutput(piece);
    }
    collector.dokonci();
    require(collector.takeOutput() == repairUtf8(output), "the output is not what was written");
    return lines;
}

void expectALine(const std::string& line) {
    require(isValidUtf8(line) && !line.contains('\n') && line.size() <= longestLine, "what is no line");
    require(line.find_first_not_of(" \t") != std::string::npos, "a line that says nothing");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    static const ClaudeCodeAdapter claude;
    static const CodexAdapter codex;
    const AgentAdapter& agent = data[0] % 2 == 0 ? static_cast<const AgentAdapter&>(claude) : codex;
    const auto output = asText({data + 1, size - 1});
    const auto pieceLength = data[0] / 2 == 0 ? std::string_view::npos : data[0] / 2U;

    const auto lines = linesOf(output, pieceLength);
    // Each piece is decoded by itself, so only a character that two pieces share may make a difference.
    if (isAscii(output))
        require(lines == linesOf(output, std::string_view::npos), "the pieces make other lines");
    SberatelZprav kept;
    std::size_t sessions = 0;
    for (const auto& line : lines) {
        expectALine(line);
        if (const auto message = agent.precti(line))
            sessions += kept.add(*message) == SberatelZprav::Relace::fresh;
    }
    require(sessions <= SberatelZprav::mostSessions, "more sessions than one run may name");
    return 0;
}
