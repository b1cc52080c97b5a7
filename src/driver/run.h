// The diagnostic run: every step once, in one fixed order.
#pragma once

namespace driver {

/// The exit status. It is the reverse of the usual convention.
enum class ExitStatus {
  notStarted = 0,  ///< No path, no Notes library, or one that could not be initialised.
  completed = 1    ///< The run reached its end, whatever a step reported on the way.
};

/// Runs the diagnostics. `argv` holds the program name, the path of the Domino program directory
/// and optionally "stdout"; all of it goes to the Notes library unchanged. A failure that no step
/// expects leaves this function as an exception, which nothing above it catches.
ExitStatus run(int argc, char** argv);

}  // namespace driver
