#define XML_DTD // the library is made with it, and its header hides what it offers then
#include "host/documents/XmlParser.h"

#include <algorithm>
#include <limits>
#include <new>
#include <utility>

namespace {

constexpr size_t kLeastPiece = size_t{1} << 16;
constexpr size_t kLargestPiece = size_t{1} << 30; // what the parser's numbers allow

} // namespace

XmlParser::XmlParser(XmlEvents& events, bool isTrusted) : m_Events(events) {
    if (!m_Parser) {
        throw std::bad_alloc();
    }
    if (isTrusted) {
        XML_SetBillionLaughsAttackProtectionMaximumAmplification(
            m_Parser.get(), std::numeric_limits<float>::max());
    }
    Connect();
}

/// Nothing that is thrown passes through the parser.
template <class Step>
void XmlParser::Do(void* parser, Step step) {
    auto& self = *static_cast<XmlParser*>(parser);
    try {
        if (!self.m_Failure) { // it reports the end of an empty element even after a stop
            step(self.m_Events);
        }
    } catch (...) {
        self.m_Failure = std::current_exception();
        XML_StopParser(self.m_Parser.get(), XML_FALSE);
    }
}

void XmlParser::Connect() {
    XML_Parser parser = m_Parser.get();
    XML_SetUserData(parser, this);
    XML_SetElementHandler(
        parser,
        [](void* self, const char* name, const char** attributes) {
            Do(self, [&](XmlEvents& events) { events.Start(name, attributes); });
        },
        [](void* self, const char*) { Do(self, [](XmlEvents& events) { events.End(); }); });
    XML_SetCharacterDataHandler(parser, [](void* self, const char* text, int length) {
        Do(self, [&](XmlEvents& events) { events.AddText({text, size_t(length)}); });
    });
    XML_SetSkippedEntityHandler(parser, [](void* self, const char* name, int) {
        // One that is declared elsewhere is shown as it is written.
        Do(self, [&](XmlEvents& events) { events.AddText('&' + std::string(name) + ';'); });
    });
    XML_SetXmlDeclHandler(parser, [](void* self, const char*, const char*, int) {
        Do(self, [](XmlEvents& events) { events.EndPrologue(); });
    });
    XML_SetEndDoctypeDeclHandler(
        parser, [](void* self) { Do(self, [](XmlEvents& events) { events.EndPrologue(); }); });
}

/// The parser copies what it gets, so that is little; it goes through the beginning of a tag again
/// each time that it gets more, so that is twice as much each time that nothing came of it.
bool XmlParser::Read(std::string_view text, size_t begin, size_t end, ReadProgress* progress) {
    m_Pieces.push_back({m_Fed, begin});
    size_t size = kLeastPiece;
    XML_Index before = XML_GetCurrentByteIndex(m_Parser.get());
    bool isRight = true;
    while (isRight && begin < end && (!progress || progress->Advance({begin, text.size()}))) {
        const std::string_view piece = text.substr(begin, std::min(size, end - begin));
        begin += piece.size();
        isRight = Feed(piece, false);
        const XML_Index after = XML_GetCurrentByteIndex(m_Parser.get());
        size =
            after != std::exchange(before, after) ? kLeastPiece : std::min(2 * size, kLargestPiece);
    }
    return isRight && begin == end;
}

bool XmlParser::Feed(std::string_view bytes, bool isLast) {
    m_Fed += bytes.size();
    const XML_Status status =
        XML_Parse(m_Parser.get(), bytes.data(), static_cast<int>(bytes.size()), isLast);
    if (m_Failure) {
        std::rethrow_exception(m_Failure);
    }
    if (XML_GetErrorCode(m_Parser.get()) == XML_ERROR_NO_MEMORY) {
        throw std::bad_alloc();
    }
    return status == XML_STATUS_OK;
}

size_t XmlParser::Place() const {
    const auto fed = static_cast<size_t>(XML_GetCurrentByteIndex(m_Parser.get()));
    while (m_Pieces.size() > 1 && m_Pieces[1].m_Fed <= fed) {
        m_Pieces.pop_front();
    }
    return m_Pieces.front().m_Begin + (fed - m_Pieces.front().m_Fed);
}

size_t XmlParser::PlaceBehind() const {
    return Place() + static_cast<size_t>(XML_GetCurrentByteCount(m_Parser.get()));
}

std::string XmlParser::Fault() const {
    const std::string line = std::to_string(XML_GetCurrentLineNumber(m_Parser.get()));
    return "line " + line + ": " + XML_ErrorString(XML_GetErrorCode(m_Parser.get()));
}
