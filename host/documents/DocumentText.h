#pragma once

#include "host/components/ItemLook.h"
#include "host/documents/Extents.h"
#include "host/reading/ReadProgress.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>

/// A part of a text that has rows of its own.
struct DocumentPart {
    size_t m_Begin = 0; ///< in bytes
    size_t m_End = 0;   ///< behind it; where it begins for one that stands nowhere

    bool IsSomewhere() const { return m_End > m_Begin; }
};

/// A row of a part of a text, or a row below an earlier one of these.
struct DocumentRow {
    std::string m_Label;
    ItemKind m_Kind;
    uint32_t m_Value = 0; ///< where in the label the value begins, behind a name
    uint32_t m_Level = 0; ///< 0 for those of the part; one more than that of the row it belongs to
    bool m_IsBranch = false;  ///< other rows may belong to it
    DocumentPart m_Part = {}; ///< which is still to be read; else they follow
};

struct DocumentRows {
    std::deque<DocumentRow> m_Rows; ///< to be taken from the front, so that memory is free for more
    size_t m_BytesRead = 0;
};

/// How a text is gone through.
struct IndexOptions {
    ReadProgress* m_Progress = nullptr; ///< may be null
    bool m_IsCut = false;               ///< that the text breaks off is no fault
    size_t m_Least = kLeastExtent;      ///< of the containers that are jumped over
};

/// A text that was gone through once, and of which a part is read when it is wanted: at the cost
/// of its own bytes, and not of the larger parts in it. Holds no host object, so that any thread
/// may make one.
class DocumentText {
public:
    explicit DocumentText(std::string text) : m_Text(std::move(text)), m_End(m_Text.size()) {}
    virtual ~DocumentText() = default;
    DocumentText(const DocumentText&) = delete;
    DocumentText& operator=(const DocumentText&) = delete;

    /// The rows of the whole, and the fault as the last one. `progress` may be null. Throws
    /// std::bad_alloc, as the next does.
    DocumentRows ReadRoot(ReadProgress* progress) const {
        DocumentRows rows = ReadWhole(progress);
        if (!m_Fault.empty()) {
            rows.m_Rows.push_back({.m_Label = m_Fault, .m_Kind = ItemKind::kFault});
        }
        return rows;
    }
    /// The rows of a part that a row has named. `progress` may be null; it hears of places in the
    /// whole text.
    virtual DocumentRows ReadPart(
        const DocumentPart& part, ReadProgress* progress = nullptr) const = 0;

    /// What is wrong with the text, with its line; "" when nothing is.
    const std::string& Fault() const { return m_Fault; }

protected:
    /// The rows of what is right.
    virtual DocumentRows ReadWhole(ReadProgress* progress) const = 0;

    std::string m_Text;
    size_t m_End; ///< in bytes: the text was gone through up to there
    std::string m_Fault;
};
using DocumentTextPtr = std::shared_ptr<const DocumentText>;
