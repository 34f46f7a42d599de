#pragma once

#include "host/reading/ReadProgress.h"

#include <cstddef>
#include <deque>
#include <exception>
#include <expat.h>
#include <memory>
#include <string>
#include <string_view>

/// Hears what is in an XML text. May throw.
struct XmlEvents {
    virtual ~XmlEvents() = default;
    /// `attributes` are names and values in turn, and null in the end.
    virtual void Start(const char* name, const char* const* attributes) = 0;
    virtual void End() = 0;
    virtual void AddText(std::string_view text) = 0;
    /// What says how the rest is to be read, in front of the first element, ends here.
    virtual void EndPrologue() {}
};

/// The parser, which is fed pieces of a text and knows where in the text it is. Nothing outside the
/// text is opened.
class XmlParser {
public:
    /// `events` outlives it. With `isTrusted` entities may be as long as they want, as in a text
    /// that was gone through before. Throws std::bad_alloc.
    XmlParser(XmlEvents& events, bool isTrusted);

    /// Reads what stands between two places of the text; no tag is cut by either. False when
    /// something is wrong, or the progress, which may be null, makes an end of it. Throws what the
    /// events throw, and std::bad_alloc.
    bool Read(std::string_view text, size_t begin, size_t end, ReadProgress* progress = nullptr);
    /// No more follows; false when something is wrong.
    bool Finish() { return Feed({}, true); }

    /// How many bytes were read by now.
    size_t Fed() const { return m_Fed; }
    /// The place up to where they reach.
    size_t Reached() const { return m_Pieces.back().m_Begin + (m_Fed - m_Pieces.back().m_Fed); }

    // While the events hear something:

    /// Where the tag begins in the text, or the entity that the tag comes from.
    size_t Place() const;
    /// The same for where it ends.
    size_t PlaceBehind() const;

    bool HasFault() const { return XML_GetErrorCode(m_Parser.get()) != XML_ERROR_NONE; }
    /// Whether it is that entities are too long beside the text.
    bool HasTooLongEntities() const {
        return XML_GetErrorCode(m_Parser.get()) == XML_ERROR_AMPLIFICATION_LIMIT_BREACH;
    }
    /// What is wrong, with its line, where all was read from the beginning.
    std::string Fault() const;

private:
    struct Closer {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };
    struct Piece {
        size_t m_Fed;   ///< bytes before it
        size_t m_Begin; ///< in the text
    };

    template <class Step>
    static void Do(void* parser, Step step);
    void Connect();
    bool Feed(std::string_view bytes, bool isLast);

    XmlEvents& m_Events;
    std::unique_ptr<XML_ParserStruct, Closer> m_Parser{XML_ParserCreate(nullptr)};
    std::exception_ptr m_Failure;
    size_t m_Fed = 0;
    mutable std::deque<Piece> m_Pieces; ///< without those that it is past
};
