#include "app/Menu.h"

#include <algorithm>

namespace kavendra {

namespace {

void forEachQuestion(Menu& menu, const auto& visit) {
    for (MenuEntry& entry : menu) {
        if (entry.question)
            visit(entry);
        forEachQuestion(entry.submenu, visit);
    }
}

} // namespace

void enableByQuestions(Menu& menu, Executor& executor) {
    std::vector<MenuQuestion> questions;
    forEachQuestion(menu, [&](const MenuEntry& entry) {
        if (std::ranges::find(questions, entry.question) == questions.end())
            questions.push_back(entry.question);
    });
    std::vector<std::function<bool()>> functions;
    for (const MenuQuestion& question : questions)
        functions.emplace_back([question] { return (*question)(); });
    const auto answers = askAll(executor, functions, menuPatience);
    forEachQuestion(menu, [&](MenuEntry& entry) {
        const auto position = std::ranges::find(questions, entry.question) - questions.begin();
        entry.isEnabled = answers[static_cast<std::size_t>(position)].value_or(true);
    });
}

} // namespace kavendra
