#include "cli/rungdb.h"

#include <ostream>

#include "gdb/gdbserver.h"
#include "gdb/gdbsession.h"

namespace velmora {

GdbOutcome rungdb(CliSession& session, int port, std::ostream& err) {
    GdbServer server;
    std::string error;
    if (!server.listen(port, error)) {
        err << "velmora-cli run: --gdb " << error << "\n";
        return GdbOutcome::NoServer;
    }
    err << "velmora-cli run: waiting for gdb on 127.0.0.1:" << server.port() << std::endl;
    RunControl& run = session.runcontrol();
    Machine& m = session.machine();
    run.menuspeed(kRateStep);
    run.menustart();
    GdbSession gdb(run, [&server](const std::string& bytes) { server.write(bytes); },
                   [&server] { return server.poll(); });
    session.clock().onyield = [&gdb] { gdb.duringrun(); };
    if (server.accept())
        for (std::string bytes = server.read(); !bytes.empty() && gdb.end() == GdbSession::End::None;
             bytes = gdb.end() == GdbSession::End::None ? server.read() : std::string())
            gdb.receive(bytes.data(), bytes.size());
    session.clock().onyield = nullptr;
    server.closeclient();
    if (gdb.end() == GdbSession::End::Killed) return GdbOutcome::Killed;
    gdb.release();
    if (m.simulationrunning) run.menuspeed(kRateUltimate);
    return GdbOutcome::Detached;
}

}  // namespace velmora
