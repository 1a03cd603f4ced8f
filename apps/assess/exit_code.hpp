#pragma once

namespace assess {

/// What the program tells its caller.
enum class ExitCode : int {
    NothingFailed = 0,
    SomethingFailed = 1,
    WrongUsage = 2,
    UnusableInput = 3,  ///< also of an output that cannot be written
};

}  // namespace assess
