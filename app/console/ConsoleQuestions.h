#pragma once

#include "app/console/ConsoleOutput.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// Asks for several things, a line each, before a command does its work. Main thread.
class ConsoleQuestions {
  public:
    enum class Typing { shown, hidden };

    struct Question {
        std::string words;
        enum class Empty { giveUp, answer } empty = Empty::answer; ///< what an empty line means
        Typing typing = Typing::shown;
    };

    using Answers = std::vector<std::string>;

    /// `setTyping`: whether the terminal shows what is typed. The reference outlives this object.
    ConsoleQuestions(const ConsoleOutput& output, std::function<void(Typing)> setTyping)
        : output_(output), setTyping_(std::move(setTyping)) {}

    /// `done` gets the answers in the order of the questions, without blanks at their ends, but a hidden one
    /// as it was typed. It is not called when the person gives up.
    void ask(std::vector<Question> questions, std::function<void(Answers)> done);

    /// Whether the next line is an answer.
    [[nodiscard]] bool isAsking() const { return asked_.has_value(); }

    void answer(const std::string& line);

  private:
    struct Asked {
        std::vector<Question> questions;
        std::function<void(Answers)> done;
        Answers answers = {};

        [[nodiscard]] const Question& current() const { return questions[answers.size()]; }
    };

    void printQuestion() const;

    const ConsoleOutput& output_;
    std::function<void(Typing)> setTyping_;
    std::optional<Asked> asked_;
};

} // namespace morvex
