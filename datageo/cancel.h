// A caller's request to stop, asked for on the way through long loops.
#pragma once

#include <atomic>

namespace calcora {

/// Reads a flag that another thread may raise at any time; a null flag is never raised.
inline bool isRaised(bool* flag)
{
    return flag && std::atomic_ref(*flag).load(std::memory_order_relaxed);
}

/// Thrown out of the work in hand when the flag is seen; never leaves the extraction.
struct Cancelled {};

/// Called at every step of long loops, it reads the flag now and then.
class CancelCheck {
public:
    explicit CancelCheck(bool* flag = nullptr) : flag_(flag) {}

    /// Throws Cancelled when it is time to look and the flag is raised.
    void operator()()
    {
        if ((++steps_ & kStepsBetweenLooks) == 0 && isRaised(flag_)) throw Cancelled();
    }

private:
    static constexpr unsigned kStepsBetweenLooks = 0x3FF;
    bool* flag_;
    unsigned steps_ = 0;
};

}  // namespace calcora
