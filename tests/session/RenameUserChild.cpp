// The program's rename of a user in a process of its own, for the tests that stop it at every
// step: it opens the remembered user of the root given, renames one user and exits 0, or says
// what failed and exits 1.
#include <cstdio>

#include "session/Session.h"

int main(int argc, char** argv) {
    using namespace nutrovex;
    if (argc != 5) {
        std::fprintf(stderr, "usage: %s ROOT OPEN-USER NAME NEW-NAME\n", argv[0]);
        return 2;
    }
    const FixedClock clock(CalendarDate::fromDmy(21, 11, 2002));
    MemorySettings settings;
    settings.setCurrentUserName(argv[2]);
    Session session(argv[1], clock, settings, {});
    std::string reason;
    if (session.start(reason) != Session::Start::Running) {
        std::fprintf(stderr, "%s\n", reason.c_str());
        return 1;
    }
    SessionStatus status = session.initialLoad();
    if (status && session.openUserName() != argv[2]) {
        std::fprintf(stderr, "%s is not open\n", argv[2]);
        return 1;
    }
    if (status) {
        status = session.renameUser(argv[3], argv[4]);
    }
    if (!status) {
        std::fprintf(stderr, "%s\n", status.message().c_str());
        return 1;
    }
    return 0;
}
