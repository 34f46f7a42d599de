#pragma once

#include "framework/interfaces/FileInterfaces.h"
#include "host/components/CreatableString.h"
#include "host/data/FolderCollection.h"
#include "host/drawing/DrawnItem.h"
#include "host/folders/FolderScan.h"
#include "host/folders/FolderWatch.h"
#include "host/reading/BackgroundReads.h"
#include "host/reading/ReadFailures.h"

#include <functional>
#include <string>

/// What the folders of one tree share.
struct FolderHelpers {
    /// Hears of what cannot be read; never null.
    ReadFailuresPtr m_Failures = std::make_shared<ReadFailures>();
    FolderWatchPtr m_Watch = {};     ///< watches what was read, unless it is null
    BackgroundReadsPtr m_Reads = {}; ///< reads beside the window's thread; null to read at once
    /// Looks into a folder, on any thread, as ScanFolder does.
    std::function<FolderScan(
        const std::string& path, const FolderPath* step, ReadProgress* progress)>
        m_Look = &ScanFolder;
};

/// A folder of the file system as a collection, read when it is asked to: folders first, each kind
/// by name in the order of the program's locale. A linked folder is one too, unless it leads back
/// to a folder on its own path: that one is shown as a file. A folder that cannot be read stays
/// empty, and one that is gone when it is read again becomes so. Where looking into it takes long
/// it goes on beside: one that was never read has a single row meanwhile that says so, and another
/// one stays as it was. It counts as changed when that is over.
class FolderSource final
    : public HostObject<FolderSource, FolderCollection, CollectionVersion, IFileArchive, DrawnItem,
          IHostFileItem, IHostFolder, IHostRereadable, IHostOpenItem> {
public:
    static constexpr const char* kKind = "FolderSource";

    /// `path` as the system has it, which need not be UTF-8. `isLink`: it is reached by a link, and
    /// drawn as one.
    explicit FolderSource(std::string path, FolderHelpers helpers = {},
        FolderPathPtr above = nullptr, bool isLink = false)
        : m_Path(std::move(path)), m_Helpers(std::move(helpers)), m_Above(std::move(above)) {
        SetLook({ItemKind::kFolder, isLink});
    }
    ~FolderSource();

    /// Takes what was found in the folder instead of looking into it. Throws when memory runs out.
    void Fill(FolderScan scan);

    int32_t SetFileName(IString* fileName) override;
    /// Reads the folder once. E_FAIL when it cannot be read; a later call tries again. S_OK also
    /// when it takes longer and goes on beside the window's thread, until when the folder has its
    /// one row.
    int32_t Populate() override;
    int32_t GetContentState(int32_t selector, int32_t* value) override;

    int32_t ReadAgain(int32_t newFlags) override;
    int32_t IsChanged() override;
    int32_t GetPath(IString** path) override { return HandOutString(m_Path, path); }
    int32_t GetLook(ItemLook* look) override;
    int32_t SetOpen(bool isOpen) override {
        DrawOpen(isOpen);
        return S_OK;
    }

private:
    enum class State {
        kUnread,  ///< nothing is in it, and it will be read when that is asked for
        kAwaited, ///< nothing is in it but the row that says that it is being read
        kRead     ///< what was found last is in it, also while it is read again
    };

    bool IsShown() const { return m_State != State::kUnread; }
    bool Read(int32_t newFlags);
    std::optional<FolderScan> LookBeside();
    std::optional<FolderScan> BeginToLook();
    void ShowThatItIsRead();
    void Prepare();
    bool Take(FolderScan scan, int32_t newFlags);
    std::vector<Entry> Merge(std::vector<FolderEntry> found, int32_t newFlags, bool& isChanged);
    SmartPtr<IUnknown> MakeItem(const FolderEntry& found) const;
    void WatchAnew();
    void Unwatch();
    void Forget();
    void NoteFailure(const std::error_code& error) const;

    std::string m_Path;
    FolderHelpers m_Helpers;
    FolderPathPtr m_Above;              ///< null for the root of a tree
    std::shared_ptr<FolderPath> m_Step; ///< null until the first reading; the folders below hold it
    int m_WatchNumber = -1;
    State m_State = State::kUnread;
    bool m_IsOutdated = false; ///< it changed while it was looked into
};
