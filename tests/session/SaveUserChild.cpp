// The program's Save User in a process of its own, for the tests that stop it at every step: it
// opens the remembered user "Ann" of the root given, changes her logbook and catalogue, saves
// both and exits 0, or says what failed and exits 1.
#include <cstdio>

#include "session/Session.h"

int main(int argc, char** argv) {
    using namespace nutrovex;
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s ROOT\n", argv[0]);
        return 2;
    }
    const FixedClock clock(CalendarDate::fromDmy(21, 11, 2002));
    MemorySettings settings;
    settings.setCurrentUserName("Ann");
    Session session(argv[1], clock, settings, {});
    std::string reason;
    if (session.start(reason) != Session::Start::Running) {
        std::fprintf(stderr, "%s\n", reason.c_str());
        return 1;
    }
    SessionStatus status = session.initialLoad();
    if (status && session.openUserName() == "Ann") {
        (void)session.days().ensureCurrentDay();
        session.days().currentRecord()->setWater(9);
        FoodCategory rolls;
        rolls.name = "Rolls";
        session.catalogue().groups[0].push_back(rolls);
        session.catalogue().renumberGroupChunks();
        session.apply(Notices{.userData = true, .catalogue = true});
        status = session.saveAll();
    }
    if (!status) {
        std::fprintf(stderr, "%s\n", status.message().c_str());
        return 1;
    }
    return 0;
}
