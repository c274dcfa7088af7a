/// The application, as the modules it loads see it.
#include "vo_app_base/app_base.h"

namespace {

bool is_known(AppBase::VerifiableState state)
{
    return state >= 0 && state < AppBase::VERIFIABLE_STATE_COUNT;
}

} // namespace

AppBase::AppBase(const CoreString& version_name)
    : version_name_(version_name)
{
}

AppBase::~AppBase() = default;

void AppBase::register_verification_callback_for_state(VerifiableState state, VerificationCallback callback)
{
    if (!is_known(state)) return;
    const std::lock_guard<std::mutex> lock(callbacks_mutex_);
    callbacks_[state] = callback;
}

bool AppBase::verify_state(VerifiableState state, bool interactive)
{
    if (!is_known(state)) return true;
    VerificationCallback callback = nullptr;
    {
        // Not held during the call: the callback may register another one.
        const std::lock_guard<std::mutex> lock(callbacks_mutex_);
        callback = callbacks_[state];
    }
    return callback ? callback(interactive) : true;
}

AppDialog AppBase::show_question_dialog(const CoreString&, const CoreString&, const AppDialog& default_answer,
                                        const int&, const CoreBasicArray<CoreString>&)
{
    return default_answer;
}
