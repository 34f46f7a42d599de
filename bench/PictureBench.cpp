#include "bench/BareCalls.h"
#include "bench/Work.h"

#include <algorithm>

// Frames: the whole picture, from white to the last row that fits.

namespace {

struct Place {
    const char* m_Name;
    int32_t m_Percent; ///< of the rows above the first one shown
};

double WantedFor(Source source, int32_t rows, const Place& place) {
    if (source.m_Vouched == Vouched::kYes) {
        return 130;
    }
    const bool isTop = place.m_Percent == 0;
    return rows == 100 ? 130 : isTop ? 0 : rows == 10'000 ? 300 : rows == 100'000 ? 2'000 : 0;
}

/// The last picture that is full; it shows 42 rows.
int32_t FirstRow(int32_t rows, const Place& place) {
    constexpr int32_t kShown = 42;
    return static_cast<int32_t>(int64_t{rows - kShown} * place.m_Percent / 100);
}

/// The picture, and before it the count where nobody vouches for the last one.
std::function<void(Stage&)> FloorOf(Source source) {
    return [isCounted = source.m_Vouched == Vouched::kNo](Stage& stage) {
        if (isCounted) {
            CountBare(stage.Root());
        }
        stage.RepaintBare();
    };
}

void AddRepaint(Source source, Shape shape, int32_t rows, const Place& place) {
    const int32_t first = FirstRow(rows, place);
    Measure({"repaint/" + std::string(place.m_Name) + '/' + std::to_string(rows) + '/' +
                 NameOf(shape) + '/' + NameOf(source),
        WantedFor(source, rows, place), [=] { return MakeTree(source, shape, rows); },
        [=](Stage& stage) { stage.ScrollTo(first); }, [](Stage& stage) { stage.Repaint(); },
        FloorOf(source)});
}

} // namespace

void AddRepaints(Source source, Shape shape, int32_t most) {
    for (const Place& place : {Place{"top", 0}, Place{"middle", 50}, Place{"end", 100}}) {
        for (int32_t rows = 100; rows <= most; rows *= 10) {
            AddRepaint(source, shape, rows, place);
        }
    }
    constexpr int32_t kRows = 1'000;
    Measure(
        {"scroll by a row/" + std::to_string(kRows) + '/' + NameOf(shape) + '/' + NameOf(source),
            150, [=] { return MakeTree(source, shape, kRows); }, [](Stage&) {},
            [row = 0](Stage& stage) mutable {
                row = (row + 1) % (kRows / 2);
                stage.ScrollTo(row);
                stage.Repaint();
            },
            FloorOf(source)});
}
