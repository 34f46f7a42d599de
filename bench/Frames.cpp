#include "bench/Work.h"

void DrawFrames(Vouched vouched, int32_t rows, int32_t frames) {
    Stage stage(MakeTree({Data::kSuper, vouched}, Shape::kFlat, rows));
    for (int32_t i = 0; i < frames; ++i) {
        stage.Repaint();
    }
}
