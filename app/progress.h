// Long work: what is shown meanwhile, and how it is stopped.
#pragma once

#include <condition_variable>
#include <mutex>
#include <string>
#include <thread>

namespace calcora::app {

/// While it lives, Ctrl-C raises a flag instead of ending the program; a second Ctrl-C ends it. One
/// at a time.
class Interrupt {
public:
    Interrupt();
    ~Interrupt();
    Interrupt(const Interrupt&) = delete;
    Interrupt& operator=(const Interrupt&) = delete;

    /// The flag as the module's operations take it.
    bool* flag();
    bool raised() const { return isRaised(); }
    /// Where no Interrupt is at hand; false when there is none.
    static bool isRaised();
};

/// Thrown where work is broken off because of an interrupt.
struct Interrupted {};

/// Shows, on a terminal, what is being done and for how long as soon as it takes more than a
/// second, and wipes it away at the end.
class Progress {
public:
    explicit Progress(std::string task);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

private:
    void show();

    std::string task_;
    std::mutex mutex_;
    std::condition_variable wake_;
    bool done_ = false;
    std::thread thread_;
};

}  // namespace calcora::app
