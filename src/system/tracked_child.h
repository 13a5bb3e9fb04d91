// The tracked child: the one process the library starts and keeps for its
// client, in a process-wide slot.
#pragma once

#include <cstdint>
#include <string_view>

namespace brindle::system {

// How long ending the tracked child may take. The child is asked to end
// (POSIX: SIGTERM; Windows ends it at once), then looked at every
// kKillPollMs; when it has not ended after kKillGraceMs it is ended
// unconditionally (POSIX: SIGKILL), and after kKillLimitMs in all the caller
// stops waiting (a process stuck in the system may outlast even SIGKILL;
// its end is then collected later, never left as a zombie).
inline constexpr int kKillPollMs = 100;
inline constexpr int kKillGraceMs = 2000;
inline constexpr int kKillLimitMs = 5000;

// Starts the program a command line names (its first word: see
// command_words; a name without '/' or '\' is looked for along "PATH",
// never run through a command interpreter) with the rest of the line's words
// as its arguments, and keeps it in the slot. A child already in the slot is
// let go first (as child_close). Gives 0, or the errno value of the failure
// (2 not found or an empty line, 13 not executable, 12 out of memory), which
// is also stored in errno; the slot is then empty.
int32_t child_create(std::string_view command_line);

// The errno value of the last child_create (0 after a success).
int32_t child_last_error() noexcept;

// Ends the tracked child (exit code 1 on Windows) and waits for its end as
// above, then empties the slot. Returns at once when the slot is empty.
void child_kill();

// Empties the slot without stopping the child.
void child_close();

// True while a child is in the slot and has not ended (for the tests).
bool child_running();

} // namespace brindle::system
