#pragma once
// `velmora-cli run --gdb PORT`: the program started and stopped before its first instruction,
// served to one avr-gdb client until it detaches or kills it.

#include <iosfwd>

#include "cli/session.h"

namespace velmora {

enum class GdbOutcome { Detached, Killed, NoServer };

// Listens on 127.0.0.1:port (saying on `err` which port), starts the program at Step By Step
// and answers one client. A client that detaches or goes away leaves the program running on
// at the Ultimate rate to its own end, without its breakpoints and watches.
GdbOutcome rungdb(CliSession& session, int port, std::ostream& err);

}  // namespace velmora
