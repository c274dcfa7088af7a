/// Interruption: the user's wish to end, noticed between two steps of long work.
#pragma once

/// Thrown by Interruption::check. No std::exception: nothing on the way takes it for an error.
struct Interrupted
{
};

/// While it lives the signals that ask a program to end (from the keyboard, the terminal or another program) are kept
/// for `check`. One at a time.
class Interruption
{
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    /// Throws Interrupted when such a signal came.
    static void check();

    /// Ends the process by the signal that came, as if nobody had kept it. Does nothing when none came.
    static void end_process();
};
