#include <iterator>

#include "ui/frame/FrameTour.h"

namespace nutrovex {

// The areas whose screens the tour shows, in order: adding an area is one entry here, for its
// `<area>TourStops(Session&, SessionNotifier&)`.
#define NUTROVEX_TOUR_AREAS(AREA) \
    AREA(frame)                   \
    AREA(profile)                 \
    AREA(logbook)                 \
    AREA(foods)                   \
    AREA(catalogue)               \
    AREA(exercise)                \
    AREA(charts)

#define NUTROVEX_DECLARE_TOUR_AREA(area) \
    std::vector<TourStop> area##TourStops(Session& session, SessionNotifier& notifier);
NUTROVEX_TOUR_AREAS(NUTROVEX_DECLARE_TOUR_AREA)
#undef NUTROVEX_DECLARE_TOUR_AREA

std::vector<TourStop> allTourStops(Session& session, SessionNotifier& notifier) {
    using AreaStops = std::vector<TourStop> (*)(Session&, SessionNotifier&);
#define NUTROVEX_TOUR_AREA_ENTRY(area) &area##TourStops,
    const AreaStops areas[] = {NUTROVEX_TOUR_AREAS(NUTROVEX_TOUR_AREA_ENTRY)};
#undef NUTROVEX_TOUR_AREA_ENTRY
    std::vector<TourStop> stops;
    for (const AreaStops area : areas) {
        std::vector<TourStop> more = area(session, notifier);
        stops.insert(stops.end(), std::make_move_iterator(more.begin()),
                     std::make_move_iterator(more.end()));
    }
    return stops;
}

}  // namespace nutrovex
