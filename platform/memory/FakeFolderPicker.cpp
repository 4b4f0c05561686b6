#include "platform/memory/FakeFolderPicker.h"

namespace morvex {

Task<std::vector<std::string>> FakeFolderPicker::pick(Question question) {
    questions.push_back(std::move(question));
    if (answers.empty()) co_return std::vector<std::string>();
    auto answer = std::move(answers.front());
    answers.pop_front();
    co_return answer;
}

} // namespace morvex
