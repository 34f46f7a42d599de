#pragma once

#include "framework/interfaces/CollectionInterfaces.h"
#include "framework/runtime/SmartPtr.h"
#include "host/reading/ReadProgress.h"

#include <string>
#include <string_view>

/// An archive: a file, by its name, or its bytes.
struct ArchivePlace {
    std::string m_Path;            ///< "" for one in memory
    std::string_view m_Bytes = {}; ///< which have to last while it is read
};

/// Whether there is an archive of a kind that ReadArchive lists, or something compressed, which may
/// be one.
bool IsArchive(const ArchivePlace& place);

/// Lists a tar archive, compressed or not, a zip or a 7z archive as a folder with folders and files
/// in the order of folders. Nothing is unpacked, no link is followed, and names stand for nothing
/// but themselves: `..` and the `/` in front are folders of that name. What stands in it twice is
/// one row. An archive that goes wrong is listed up to there, ends in a row that tells the fault,
/// and `fault` tells it too; that is empty otherwise. Any thread may read. `progress` may be null.
/// Throws when memory runs out.
SmartPtr<ISuperCollection> ReadArchive(
    const ArchivePlace& place, std::string& fault, ReadProgress* progress = nullptr);
