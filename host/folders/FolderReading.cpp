#include "host/folders/FolderReading.h"

FolderReading ReadFolder(const std::string& path, FolderPath step, const FolderHelpers& helpers,
    ReadProgress* progress) {
    FolderReading reading{.m_Step = std::move(step)};
    if (!reading.m_Step.m_Above) {
        reading.m_Step.m_Above = StepsAbove(path);
    }
    reading.m_Watched = WatchedFolder(helpers.m_Watch, path);
    Identify(path, reading.m_Step);
    reading.m_Scan = helpers.m_Look(path, &reading.m_Step, progress);
    return reading;
}
