#include "app/console/ConsoleQuestions.h"

#include "foundation/Text.h"

namespace morvex {

void ConsoleQuestions::ask(std::vector<Question> questions, std::function<void(Answers)> done) {
    asked_ = Asked{std::move(questions), std::move(done)};
    printQuestion();
}

void ConsoleQuestions::printQuestion() const {
    const auto& question = asked_->current();
    // Before the words, because a person or a program may answer as soon as they are there.
    if (question.typing == Typing::hidden) setTyping_(Typing::hidden);
    output_.line(question.words);
}

void ConsoleQuestions::answer(const std::string& line) {
    const auto& question = asked_->current();
    const bool isHidden = question.typing == Typing::hidden;
    if (isHidden) setTyping_(Typing::shown);
    auto text = isHidden ? line : trim(line);
    if (text.empty() && question.empty == Question::Empty::giveUp) {
        asked_.reset();
        return output_.line("Nic jsem nepřidal.");
    }
    asked_->answers.push_back(std::move(text));
    if (asked_->answers.size() < asked_->questions.size()) return printQuestion();
    auto asked = *std::exchange(asked_, std::nullopt);
    asked.done(std::move(asked.answers));
}

} // namespace morvex
