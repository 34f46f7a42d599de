#pragma once

#include "framework/runtime/SmartPtr.h"
#include "host/documents/DocumentText.h"

#include <memory>
#include <string_view>
#include <vector>

class DocumentLevel;

/// Where an item of a document stands, which is a part of the item. Its level forgets the item when
/// it dies.
class LevelPlace {
public:
    LevelPlace() = default;
    ~LevelPlace();
    LevelPlace(const LevelPlace&) = delete;
    LevelPlace& operator=(const LevelPlace&) = delete;

    /// There is something in the item that another one would not have: its level, if there is one,
    /// holds it from now on.
    void Hold() { m_Held = m_Level ? m_Item : nullptr; }

private:
    friend DocumentLevel;

    DocumentLevel* m_Level = nullptr; ///< null when it never was in one, or that is gone
    size_t m_Index = 0;
    IUnknown* m_Item = nullptr; ///< which this is a part of
    SmartPtr<IUnknown> m_Held;  ///< the item by its level, which takes that back
};

/// The rows of one level of a document, and a flag word for each. A row is a few bytes beside its
/// label; its item is made when somebody asks for it, and is the same as long as somebody holds it.
/// Used on one thread at a time.
class DocumentLevel {
public:
    struct Row {
        std::string_view Label() const { return {m_Label, m_LabelSize}; }
        /// Of a value: where in the label it begins, behind a name.
        uint32_t Value() const { return static_cast<uint32_t>(m_Part.m_Begin); }

        const char* m_Label;
        uint32_t m_LabelSize;
        int32_t m_Flags = 0;
        DocumentPart m_Part; ///< of a branch
        ItemKind m_Kind;
        bool m_IsBranch;
        LevelPlace* m_Place = nullptr; ///< that of its item, while one lives
    };

    /// `expected` is about how many rows there will be.
    explicit DocumentLevel(size_t expected) : m_Expected(expected) {}
    ~DocumentLevel();
    DocumentLevel(const DocumentLevel&) = delete;
    DocumentLevel& operator=(const DocumentLevel&) = delete;

    /// Appends a row, whatever its level is. Throws std::bad_alloc.
    void Append(const DocumentRow& row);
    size_t Count() const { return m_Count; }
    /// Null where there is no such row.
    Row* Find(int32_t index);
    /// The item of a row; null while none lives.
    static IUnknown* ItemOf(const Row& row) { return row.m_Place ? row.m_Place->m_Item : nullptr; }
    /// Gives a row its item. `place` is a part of it.
    void Connect(size_t index, IUnknown* item, LevelPlace& place);
    void SetAllFlags(int32_t flags);

private:
    friend LevelPlace;

    static constexpr size_t kRowsTogether = 1024;
    /// In blocks of so many, so that they never lie in memory twice while they become more.
    using Rows = std::vector<Row>;

    Row& At(size_t index) { return m_Rows[index / kRowsTogether][index % kRowsTogether]; }
    const char* Keep(std::string_view label);

    size_t m_Expected;
    size_t m_Count = 0;
    std::vector<Rows> m_Rows;
    std::vector<std::unique_ptr<char[]>> m_Labels;
    char* m_Free = nullptr; ///< behind the last label
    size_t m_Left = 0;      ///< bytes from there on
};
using DocumentLevelPtr = std::unique_ptr<DocumentLevel>;
