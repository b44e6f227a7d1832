#pragma once

namespace velmora {

/// Ctrl-C and the wish of the system to end the program. Signals come to a process as a whole, so
/// this is the one state of the runner that is not in an object.

/// From now on SIGINT, SIGTERM and SIGHUP are remembered instead of ending the process at once.
/// A signal that was ignored before (nohup) stays ignored.
void CatchInterrupts();

/// The signal that came since then, 0 for none.
int InterruptSignal();

/// For a process that was just forked: forgets what the parent has caught. Ctrl-C, which reaches the
/// whole group, is left to the parent, which ends its children with SIGTERM.
void LeaveInterruptsToParent();

}  // namespace velmora
