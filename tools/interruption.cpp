#include "interruption.h"

#include <csignal>

namespace {

constexpr int signals[] = {SIGINT, SIGTERM, SIGHUP};

volatile std::sig_atomic_t received = 0;

void keep(int signal)
{
    received = signal;
}

} // namespace

Interruption::Interruption()
{
    for (const int signal : signals)
        if (std::signal(signal, keep) == SIG_IGN) std::signal(signal, SIG_IGN); // as nohup has it
}

Interruption::~Interruption()
{
    for (const int signal : signals)
        if (std::signal(signal, SIG_DFL) == SIG_IGN) std::signal(signal, SIG_IGN);
}

void Interruption::check()
{
    if (received != 0) throw Interrupted();
}

void Interruption::end_process()
{
    if (received == 0) return;
    std::signal(received, SIG_DFL);
    std::raise(received);
}
