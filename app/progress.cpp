#include "app/progress.h"

#include <signal.h>
#include <unistd.h>

#include <atomic>
#include <chrono>
#include <cstdio>

namespace calcora::app {

namespace {

/// The one flag of the process that its signal handler can reach.
bool interruptFlag = false;
struct sigaction actionBefore;

static_assert(std::atomic_ref<bool>::is_always_lock_free);

extern "C" void raiseInterrupt(int)
{
    std::atomic_ref(interruptFlag).store(true, std::memory_order_relaxed);
}

}  // namespace

Interrupt::Interrupt()
{
    std::atomic_ref(interruptFlag).store(false);
    struct sigaction action {};
    action.sa_handler = raiseInterrupt;
    action.sa_flags = SA_RESTART | static_cast<int>(SA_RESETHAND);
    sigemptyset(&action.sa_mask);
    sigaction(SIGINT, &action, &actionBefore);
}

Interrupt::~Interrupt()
{
    sigaction(SIGINT, &actionBefore, nullptr);
    std::atomic_ref(interruptFlag).store(false);
}

bool* Interrupt::flag()
{
    return &interruptFlag;
}

bool Interrupt::isRaised()
{
    return std::atomic_ref(interruptFlag).load();
}

Progress::Progress(std::string task) : task_(std::move(task))
{
    if (isatty(STDERR_FILENO)) thread_ = std::thread([this] { show(); });
}

Progress::~Progress()
{
    if (!thread_.joinable()) return;
    {
        const std::lock_guard lock(mutex_);
        done_ = true;
    }
    wake_.notify_all();
    thread_.join();
}

void Progress::show()
{
    using namespace std::chrono;
    const auto begin = steady_clock::now();
    std::unique_lock lock(mutex_);
    bool shown = false;
    while (!wake_.wait_for(lock, shown ? milliseconds(200) : milliseconds(1000),
                           [this] { return done_; })) {
        const auto passed = duration_cast<seconds>(steady_clock::now() - begin).count();
        std::fprintf(stderr, "\r\x1b[K%s ... %lld s (Ctrl-C stops)", task_.c_str(),
                     static_cast<long long>(passed));
        std::fflush(stderr);
        shown = true;
    }
    if (shown) {
        std::fputs("\r\x1b[K", stderr);
        std::fflush(stderr);
    }
}

}  // namespace calcora::app
