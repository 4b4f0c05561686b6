#include "platform/ports/TlsLines.h"

#include "platform/memory/ManualExecutor.h"
#include "platform/memory/ScriptedTls.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace morvex {
namespace {

class TlsLinesTest : public testing::Test {
  protected:
    std::string line() { return told(executor.run(reader.line(20))); }

    std::string bytes(std::size_t most) { return told(executor.run(reader.bytes(most))); }

    ManualExecutor executor;
    std::shared_ptr<ScriptedTlsConnection> server = std::make_shared<ScriptedTlsConnection>();
    TlsLines reader{server};

  private:
    /// What came, in quotes, or the words of the failure.
    static std::string told(std::optional<Result<std::string>> result) {
        if (!result) return "waits";
        return *result ? "'" + **result + "'" : result->error().popis().czech();
    }
};

TEST_F(TlsLinesTest, GivesLinesWithoutTheirEndsHoweverTheyArrive) {
    for (const std::vector<std::string>& chunks :
         {std::vector<std::string>{"* OK ready\r\nA0001 OK\n\r\nlast\r\n"},
          {"* OK", " ready", "\r", "\nA0001 OK\n", "\r\n", "last\r\n"},
          {"* OK ready\r", "\nA0001 OK", "\n\r", "\nlast\r\n"}}) {
        for (const auto& chunk : chunks) server->deliver(chunk);
        EXPECT_EQ(line(), "'* OK ready'");
        EXPECT_EQ(line(), "'A0001 OK'");
        EXPECT_EQ(line(), "''");
        EXPECT_EQ(line(), "'last'");
    }
}

TEST_F(TlsLinesTest, KeepsWhatIsNoEndOfALine) {
    server->deliver(std::string("a\rb\0c\r\r\n", 8));
    EXPECT_EQ(line(), std::string("'a\rb\0c\r'", 8));
}

TEST_F(TlsLinesTest, GivesBytesBetweenLinesAsTheyArrive) {
    server->deliver("{7}\r\none\r\nt");
    server->deliver("w)\r\n");
    EXPECT_EQ(line(), "'{7}'");
    EXPECT_EQ(bytes(7), "'one\r\nt'") << "what has arrived";
    EXPECT_EQ(server->received, 1);
    EXPECT_EQ(bytes(1), "'w'");
    EXPECT_EQ(line(), "')'");
    EXPECT_EQ(bytes(1), "waits");
    server->endStream(); // ends the reading that waits
    executor.runUntilIdle();
}

TEST_F(TlsLinesTest, TellsTheEndOfTheStreamAlsoWithinALine) {
    server->deliver("whole\r\npart");
    server->endStream();
    EXPECT_EQ(line(), "'whole'");
    EXPECT_EQ(line(), "Server spojení ukončil.");
    EXPECT_EQ(bytes(5), "Server spojení ukončil.");
}

TEST_F(TlsLinesTest, TellsAFailureInItsOwnWords) {
    server->breakWith(Sentence("spadlo to"));
    EXPECT_EQ(line(), "spadlo to");
}

TEST_F(TlsLinesTest, TakesNothingThatIsTooLong) {
    const std::string limit(18, 'x');
    server->deliver(limit + "\r\n");
    EXPECT_EQ(line(), "'" + limit + "'");
    server->deliver(limit + "x");
    server->deliver("\r\n");
    EXPECT_EQ(line(), "Odpověď serveru je příliš dlouhá.");
}

TEST_F(TlsLinesTest, ReadsNoFurtherThanALineWithoutEndMayBe) {
    for (int chunk = 0; chunk < 100; ++chunk) server->deliver("xxxxxxx");
    EXPECT_EQ(line(), "Odpověď serveru je příliš dlouhá.");
    EXPECT_EQ(server->received, 3) << "chunks of 7 bytes";
}

TEST_F(TlsLinesTest, AFailureLastsWhateverStillComes) {
    server->deliver("xxxxxxxxxxxxxxxxxxxxx");
    server->deliver("\r\nA0001 OK\r\n");
    EXPECT_EQ(line(), "Odpověď serveru je příliš dlouhá.");
    EXPECT_EQ(line(), "Odpověď serveru je příliš dlouhá.");
    EXPECT_EQ(bytes(1), "Odpověď serveru je příliš dlouhá.");
    EXPECT_EQ(server->received, 1);
}

} // namespace
} // namespace morvex
