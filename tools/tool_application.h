/// ToolApplication: the tool as the application that the module asks.
#pragma once

#include <vo_app_base/app_base.h>

/// Asks on the terminal: the question goes to standard error, the answer is read from standard input.
class ToolApplication : public AppBase
{
public:
    using AppBase::AppBase;

    /// Answers every question with yes, without reading the answer.
    void set_answers_yes(bool answers_yes) { answers_yes_ = answers_yes; }

    /// An empty line is the default answer; no line at all is no.
    AppDialog show_question_dialog(const CoreString& message, const CoreString& title, const AppDialog& default_answer,
                                   const int& style, const CoreBasicArray<CoreString>& extra_buttons) override;

private:
    bool answers_yes_ = false;
};
