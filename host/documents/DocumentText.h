#pragma once

#include "host/components/ItemLook.h"
#include "host/documents/Extents.h"
#include "host/reading/ReadProgress.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

/// A part of a text that has rows of its own.
struct DocumentPart {
    size_t m_Begin = 0; ///< in bytes
    size_t m_End = 0;   ///< behind it; where it begins for one that stands nowhere

    bool IsSomewhere() const { return m_End > m_Begin; }
    bool IsWhole() const { return m_Begin == SIZE_MAX - 1; }
};
constexpr DocumentPart kWholeText{SIZE_MAX - 1, SIZE_MAX};

/// Where a row of a part begins, and the part can be read on without the rows before.
struct RowPlace {
    size_t m_Begin = 0;  ///< in bytes; 0 for one from where nothing can be read on
    size_t m_Number = 0; ///< the text's own note for that

    bool IsSomewhere() const { return m_Begin > 0; }
};

/// A row of a part of a text, or a row below an earlier one of these.
struct DocumentRow {
    std::string m_Label;
    ItemKind m_Kind;
    uint32_t m_Value = 0; ///< where in the label the value begins, behind a name
    uint32_t m_Level = 0; ///< 0 for those of the part; one more than that of the row it belongs to
    bool m_IsBranch = false;  ///< other rows may belong to it
    DocumentPart m_Part = {}; ///< which is still to be read; else they follow
    RowPlace m_Place = {};    ///< only of those of the part
};

/// Takes the rows of a part, in their order.
class RowSink {
public:
    virtual ~RowSink() = default;

    /// Answers whether more are wanted. May throw.
    virtual bool Add(DocumentRow row) = 0;
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

    /// Hands over the rows of a part that a row has named, or of the whole text, with the fault as
    /// the last one; without those before `from`, where that is somewhere. `progress` may be null;
    /// it hears of places in the whole text. Returns how many bytes were read for it. Throws what
    /// the sink throws, and std::bad_alloc.
    size_t ReadPart(const DocumentPart& part, RowSink& sink, ReadProgress* progress = nullptr,
        const RowPlace& from = {}) const {
        LastWord rows(sink);
        const size_t size = ReadRows(part, from, rows, progress);
        if (part.IsWhole() && rows.m_IsMoreWanted && !m_Fault.empty()) {
            sink.Add({.m_Label = m_Fault, .m_Kind = ItemKind::kFault});
        }
        return size;
    }

    /// How many bytes have to be read before any part is, from a place in it or not.
    size_t ReadBefore() const { return m_ReadBefore; }
    /// What is wrong with the text, with its line; "" when nothing is.
    const std::string& Fault() const { return m_Fault; }

protected:
    /// The rows of what is right.
    virtual size_t ReadRows(const DocumentPart& part, const RowPlace& from, RowSink& rows,
        ReadProgress* progress) const = 0;

    std::string m_Text;
    size_t m_End; ///< in bytes: the text was gone through up to there
    size_t m_ReadBefore = 0;
    std::string m_Fault;

private:
    /// Knows whether there is still something to say.
    struct LastWord final : RowSink {
        explicit LastWord(RowSink& sink) : m_Sink(sink) {}
        bool Add(DocumentRow row) override {
            m_IsMoreWanted = m_Sink.Add(std::move(row));
            return m_IsMoreWanted;
        }

        RowSink& m_Sink;
        bool m_IsMoreWanted = true;
    };
};
using DocumentTextPtr = std::shared_ptr<const DocumentText>;
