#include "app/mail/protocol/MacIMAPClient.h"
#include "app/mail/protocol/MacSMTPClient.h"
#include "app/mail/protocol/MailBody.h"
#include "bench/Measure.h"
#include "shared/base/Base64.h"
#include "tests/support/Await.h"
#include "tests/support/RealMail.h"

#include <cstdio>
#include <fstream>
#include <malloc.h>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

// Measures a search, a sending, and the decoding of a body, with a real IMAP and a real SMTP server over TLS;
// the baseline is the library of Python, which speaks the same dialogues with the same servers.

namespace morvex {
namespace {

constexpr int messages = 20'000;
constexpr int unread = 50;
constexpr int rounds = 7;

/// Part of this program as long as it runs: its threads are not ended.
struct Bench : RealMail {
    TemporaryFolder folder;

    [[nodiscard]] MacIMAPClient reader() {
        return {services(), "localhost", RealImapServer::username, RealImapServer::password};
    }

    std::string file(const std::string& name, const std::string& content) const {
        const auto path = folder.path() / name;
        std::ofstream(path) << content;
        return path;
    }

    /// The baseline's milliseconds by the clock and of the processor.
    static Cost baseline(std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(),
                         {"/usr/bin/python3", MORVEX_SOURCE_DIR "/bench/mail_baseline.py"});
        ChildProgram python(std::move(arguments), {});
        Cost cost{};
        std::istringstream(python.readLine()) >> cost.wall >> cost.processor;
        require(cost.wall > 0, "the baseline failed");
        return cost;
    }

    Cost baselineWith(const std::string& work, std::uint16_t port) const {
        return baseline({work, std::to_string(port), file("authority.pem", authority.certificate()),
                         RealImapServer::username, RealImapServer::password});
    }
};

/// A text in Czech of so many bytes, or a few more.
std::string czechText(std::size_t bytes) {
    std::string text;
    while (text.size() < bytes) text += "Příliš žluťoučký kůň úpěl ďábelské ódy.\n";
    return text;
}

std::string base64Lines(const std::string& text) {
    constexpr std::size_t width = 76;
    const auto digits = base64Encode(asBytes(text));
    std::string lines;
    for (std::size_t from = 0; from < digits.size(); from += width)
        lines += digits.substr(from, width) + "\n";
    return lines;
}

std::string quotedPrintable(const std::string& text) {
    std::string encoded;
    for (const char letter : text) {
        const auto byte = static_cast<unsigned char>(letter);
        char escaped[4] = {letter, 0};
        if (byte >= 0x80) std::snprintf(escaped, sizeof escaped, "=%02X", byte);
        encoded += escaped;
    }
    return encoded;
}

/// Medians of both, in turns.
void compare(const char* what, int times, const std::function<void()>& ours,
             const std::function<Cost()>& baseline) {
    std::vector<double> walls;
    std::vector<double> processors;
    std::vector<double> baseWalls;
    std::vector<double> baseProcessors;
    ours();
    for (int round = 0; round < times; ++round) {
        const auto before = processorMilliseconds();
        walls.push_back(milliseconds(ours));
        processors.push_back(processorMilliseconds() - before);
        const auto cost = baseline();
        baseWalls.push_back(cost.wall);
        baseProcessors.push_back(cost.processor);
    }
    const Cost mine{median(walls), median(processors)};
    const Cost theirs{median(baseWalls), median(baseProcessors)};
    std::printf("%s: %.1f ms, Python %.1f ms (%.2f times); processor %.1f and %.1f ms (%.2f times)\n", what,
                mine.wall, theirs.wall, mine.wall / theirs.wall, mine.processor, theirs.processor,
                mine.processor / theirs.processor);
    std::fflush(stdout);
}

Task<bool> search(Bench* bench) {
    auto client = bench->reader();
    bool works = (co_await client.login()).has_value() && (co_await client.select()).has_value();
    const auto uids = co_await client.search(true);
    works = works && uids && uids->size() == unread;
    const auto found = co_await client.fetchHeaders(uids.value());
    works = works && found && found->size() == unread;
    co_await client.logout();
    co_return works;
}

Task<bool> send(Bench* bench) {
    MacSMTPClient client(bench->services(), "localhost", RealSmtpServer::username, RealSmtpServer::password,
                         "jana@b.cz", "Jana Nová");
    std::string body;
    for (int line = 0; line < 100; ++line) body += "Dobrý den,\n";
    co_return (co_await client.send("petr@b.cz", "Zkouška", std::move(body))).has_value();
}

void compareDialogues(Bench& bench) {
    for (int number = 0; number < messages; ++number)
        bench.imap.deliver(std::to_string(100'000 + number) + ".a",
                           "From: =?UTF-8?Q?Ji=C5=99=C3=AD?= <j@b.cz>\nSubject: =?UTF-8?B?xaBrb2xh?=\n"
                           "Date: Sat, 14 Mar 2026 10:00:00 +0100\n\nAhoj.\n",
                           number % (messages / unread) != 0);
    // The server reads a mailbox that it does not know yet.
    require(await(bench.main, search(&bench)), "a search failed");
    compare(
        "searching 50 unread of 20,000 messages", rounds,
        [&] { require(await(bench.main, search(&bench)), "a search failed"); },
        [&] { return bench.baselineWith("search", bench.imap.port()); });
    compare(
        "sending a message", rounds, [&] { require(await(bench.main, send(&bench)), "a sending failed"); },
        [&] { return bench.baselineWith("send", bench.smtp.port()); });
}

void compareDecoding(const Bench& bench, const char* what, const std::string& encoding,
                     const std::string& body) {
    const auto file = bench.file(
        "message",
        "Content-Type: text/plain; charset=utf-8\nContent-Transfer-Encoding: " + encoding + "\n\n" + body);
    compare(
        what, rounds, [&] { require(!decodedBody(body).empty(), "nothing was decoded"); },
        [&] { return Bench::baseline({"decode", file}); });
}

Task<std::size_t> readNewest(Bench* bench) {
    auto client = bench->reader();
    require((co_await client.login()).has_value() && (co_await client.select()).has_value(), "no login");
    const auto uids = co_await client.search(false);
    const auto body = co_await client.fetchBody(uids.value().front());
    co_await client.logout();
    co_return body.value().value_or("").size();
}

/// The most memory that this process has had since the peak was forgotten.
double peakMebibytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:")) return std::stod(line.substr(6)) / 1024;
    return 0;
}

void measureMemory(Bench& bench) {
    bench.imap.deliver("999999.a", "From: x@y.cz\n\n" + base64Lines(czechText(11'500'000)), true);
    ::malloc_trim(0);
    std::ofstream("/proc/self/clear_refs") << "5"; // forgets the peak
    const auto before = residentMebibytes();
    const auto bytes = await(bench.main, readNewest(&bench));
    std::printf(
        "memory at most while a body of 15.5 MB is read (%.1f MB decoded): %.0f MiB, %.0f MiB before\n",
        static_cast<double>(bytes) / 1e6, peakMebibytes(), before);
}

void bench() {
    Bench bench;
    measureMemory(bench);
    compareDialogues(bench);
    compareDecoding(bench, "decoding a body of 10 MB in base64", "base64", base64Lines(czechText(7'400'000)));
    compareDecoding(bench, "decoding a body of 10 MB in quoted-printable", "quoted-printable",
                    quotedPrintable(czechText(6'200'000)));
    std::fflush(stdout);
    // The servers end with the process that started them.
    std::_Exit(0);
}

} // namespace
} // namespace morvex

int main() {
    morvex::bench();
}
