#pragma once

#include "framework/interfaces/FileInterfaces.h"
#include "host/components/CreatableString.h"
#include "host/data/FolderCollection.h"
#include "host/drawing/DrawnItem.h"
#include "host/folders/FolderReading.h"

#include <string>

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

    /// The root of a tree. `path` as the system has it, which need not be UTF-8.
    explicit FolderSource(std::string path, const FolderHelpers& helpers = {})
        : FolderSource(std::move(path), std::make_shared<const FolderHelpers>(helpers)) {}
    /// `helpers` are not null. `above` are the steps above a folder in another one, or null.
    /// `isLink`: it is reached by a link, and drawn as one.
    FolderSource(std::string path, FolderHelpersPtr helpers, FolderPathPtr above = nullptr,
        bool isLink = false)
        : m_Path(std::move(path)), m_Helpers(std::move(helpers)), m_Above(std::move(above)) {
        SetLook({ItemKind::kFolder, isLink});
    }
    ~FolderSource() { Forget(); }

    /// Reads the folder while nobody else knows it, on any thread; what kept it from reading all is
    /// the answer, and told to nobody else. `progress` may be null. Throws std::bad_alloc.
    std::error_code ReadNew(ReadProgress* progress);

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

    using Work = std::function<FolderReading(ReadProgress* progress)>;

    bool IsShown() const { return m_State != State::kUnread; }
    bool Read(int32_t newFlags);
    Work PrepareToRead();
    bool ReadBeside(BackgroundReads& reads, int32_t newFlags);
    std::optional<FolderReading> BeginToRead(BackgroundReads& reads);
    bool Take(FolderReading reading, int32_t newFlags);
    std::optional<std::vector<Entry>> NewItems(std::vector<Entry> items, int32_t newFlags) const;
    void TakeNumbers(FolderReading& reading);
    void NoteState(const FolderScan& scan);
    void NoteFailure(const std::error_code& error) const;
    void Forget();

    std::string m_Path;
    FolderHelpersPtr m_Helpers;
    FolderPathPtr m_Above;              ///< null for the root of a tree
    std::shared_ptr<FolderPath> m_Step; ///< null until the first reading; the folders below hold it
    WatchedFolder m_Watched;            ///< since it was read last
    State m_State = State::kUnread;
    bool m_HasBegun = false; ///< a reading beside, at some time
};
