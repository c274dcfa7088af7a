#include "tool_application.h"

#include "text.h"

#include <fmt/format.h>

#include <cstdio>
#include <iostream>
#include <string>

AppDialog ToolApplication::show_question_dialog(const CoreString& message, const CoreString& title,
                                                const AppDialog& default_answer, const int&,
                                                const CoreBasicArray<CoreString>&)
{
    std::fflush(stdout);
    fmt::print(stderr, "{}\n\n{} [{}] ", printable(title.get_data()), printable_lines(message.get_data()),
               default_answer.is_yes() ? "Y/n" : "y/N");
    if (answers_yes_) {
        fmt::print(stderr, "yes\n");
        return AppDialog::yes();
    }
    std::fflush(stderr);
    std::string line;
    if (!std::getline(std::cin, line)) {
        fmt::print(stderr, "no\n");
        return AppDialog::no();
    }
    if (line.empty()) return default_answer;
    return line[0] == 'y' || line[0] == 'Y' ? AppDialog::yes() : AppDialog::no();
}
