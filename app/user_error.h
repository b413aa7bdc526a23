// What the user is told when a command cannot be carried out.
#pragma once

#include <stdexcept>

namespace calcora::app {

/// Something that the user can mend: its text is the one line that is shown before the command ends
/// with exit status kBadInputStatus.
class UserError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

inline constexpr int kDoneStatus = 0;
inline constexpr int kBadInputStatus = 2;
/// Ended by Ctrl-C, as shells count it: 128 + SIGINT.
inline constexpr int kInterruptedStatus = 130;

}  // namespace calcora::app
