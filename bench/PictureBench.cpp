#include "bench/Work.h"

#include <algorithm>

// Frames: the whole picture, from white to the last row that fits.

namespace {

struct Place {
    const char* m_Name;
    int32_t m_Percent; ///< of the rows above the first one shown
};

double WantedFor(int32_t rows, const Place& place) {
    const bool isTop = place.m_Percent == 0;
    return rows == 100 ? 130 : isTop ? 0 : rows == 10'000 ? 300 : rows == 100'000 ? 2'000 : 0;
}

/// The last picture that is full; it shows 42 rows.
int32_t FirstRow(int32_t rows, const Place& place) {
    constexpr int32_t kShown = 42;
    return static_cast<int32_t>(int64_t{rows - kShown} * place.m_Percent / 100);
}

void AddRepaint(Data data, Shape shape, int32_t rows, const Place& place) {
    const int32_t first = FirstRow(rows, place);
    Measure({"repaint/" + std::string(place.m_Name) + '/' + std::to_string(rows) + '/' +
                 NameOf(shape) + '/' + NameOf(data),
        WantedFor(rows, place), [=] { return MakeTree(data, shape, rows); },
        [=](Stage& stage) { stage.ScrollTo(first); }, [](Stage& stage) { stage.Repaint(); },
        [](Stage& stage) {
            CountBare(stage.Root());
            stage.RepaintBare();
        }});
}

} // namespace

void AddRepaints(Data data, Shape shape, int32_t most) {
    for (const Place& place : {Place{"top", 0}, Place{"middle", 50}, Place{"end", 100}}) {
        for (int32_t rows = 100; rows <= most; rows *= 10) {
            AddRepaint(data, shape, rows, place);
        }
    }
    constexpr int32_t kRows = 1'000;
    Measure({"scroll by a row/" + std::to_string(kRows) + '/' + NameOf(shape) + '/' + NameOf(data),
        150, [=] { return MakeTree(data, shape, kRows); }, [](Stage&) {},
        [row = 0](Stage& stage) mutable {
            row = (row + 1) % (kRows / 2);
            stage.ScrollTo(row);
            stage.Repaint();
        },
        [](Stage& stage) {
            CountBare(stage.Root());
            stage.RepaintBare();
        }});
}
