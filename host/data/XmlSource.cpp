#include "host/data/XmlSource.h"

#include "host/data/TextItems.h"

#include <exception>
#include <expat.h>
#include <memory>
#include <new>
#include <utility>
#include <vector>

namespace {

/// Appends to a text in which any blanks and breaks are one blank, and none is in front.
void AppendWords(std::string& text, std::string_view more) {
    for (const char character : more) {
        if (std::string_view(" \t\r\n").find(character) == std::string_view::npos) {
            text += character;
        } else if (!text.empty() && text.back() != ' ') {
            text += ' ';
        }
    }
}

std::string TakeWords(std::string& text) {
    if (!text.empty() && text.back() == ' ') {
        text.pop_back();
    }
    return std::exchange(text, {});
}

/// Builds the tree while the parser reports, one level of its own for each element that is open.
class Builder {
public:
    explicit Builder(TextBranch& root) { m_Levels.push_back({{}, {}, SmartPtr(&root)}); }

    void Start(const char* name, const char* const* attributes) {
        MakeBranch(); // of the element that this one is in
        m_Levels.push_back({name, {}, {}});
        for (; *attributes; attributes += 2) {
            std::string value;
            AppendWords(value, attributes[1]);
            MakeBranch().AppendLeaf(std::string("@") + attributes[0] + ": " + TakeWords(value));
        }
    }
    void AddText(std::string_view text) { AppendWords(m_Levels.back().m_Text, text); }
    void End() {
        Level& level = m_Levels.back();
        if (level.m_Branch) {
            MakeBranch();
            m_Levels.pop_back();
            return;
        }
        const std::string text = TakeWords(level.m_Text);
        std::string label = text.empty() ? std::move(level.m_Name) : level.m_Name + ": " + text;
        m_Levels.pop_back();
        m_Levels.back().m_Branch->AppendLeaf(std::move(label));
    }
    /// What is still open where the text breaks off stays as it is.
    void EndAll() {
        while (m_Levels.size() > 1) {
            End();
        }
    }

private:
    struct Level {
        std::string m_Name;
        std::string m_Text;            ///< since the last element in it
        SmartPtr<TextBranch> m_Branch; ///< none while it holds nothing but text
    };

    /// Makes a branch of the last open element, with its text so far as a row; those that it is in
    /// have become branches before.
    TextBranch& MakeBranch() {
        Level& level = m_Levels.back();
        if (!level.m_Branch) {
            level.m_Branch = TextBranch::Make();
            const Level& above = m_Levels[m_Levels.size() - 2];
            above.m_Branch->Append(level.m_Name, level.m_Branch->Identity());
        }
        if (std::string text = TakeWords(level.m_Text); !text.empty()) {
            level.m_Branch->AppendLeaf(std::move(text));
        }
        return *level.m_Branch.Get();
    }

    std::vector<Level> m_Levels;
};

/// The parser, and what it calls. Nothing that is thrown here passes through it.
class Reader {
public:
    explicit Reader(Builder& builder) : m_Builder(builder) {
        if (!m_Parser) {
            throw std::bad_alloc();
        }
        XML_SetUserData(m_Parser.get(), this);
        XML_SetElementHandler(
            m_Parser.get(),
            [](void* reader, const char* name, const char** attributes) {
                Do(reader, [&](Builder& tree) { tree.Start(name, attributes); });
            },
            [](void* reader, const char*) { Do(reader, [](Builder& tree) { tree.End(); }); });
        XML_SetCharacterDataHandler(m_Parser.get(), [](void* reader, const char* text, int length) {
            Do(reader, [&](Builder& tree) { tree.AddText({text, size_t(length)}); });
        });
        XML_SetSkippedEntityHandler(m_Parser.get(), [](void* reader, const char* name, int) {
            // One that is declared elsewhere is shown as it is written.
            Do(reader, [&](Builder& tree) { tree.AddText('&' + std::string(name) + ';'); });
        });
    }

    /// What is wrong with the text, with its line.
    std::string Read(std::string_view text) {
        constexpr size_t kPiece = size_t{1} << 30; // whole, where the parser's numbers allow it
        XML_Status status = XML_STATUS_OK;
        do {
            const std::string_view piece = text.substr(0, kPiece);
            text.remove_prefix(piece.size());
            status = XML_Parse(
                m_Parser.get(), piece.data(), static_cast<int>(piece.size()), text.empty());
        } while (status == XML_STATUS_OK && !text.empty());
        if (m_Failure) {
            std::rethrow_exception(m_Failure);
        }
        return status == XML_STATUS_OK ? "" : Fault();
    }

private:
    struct Closer {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };

    template <class Step>
    static void Do(void* reader, Step step) {
        auto& self = *static_cast<Reader*>(reader);
        try {
            if (!self.m_Failure) { // it reports the end of an empty element even after a stop
                step(self.m_Builder);
            }
        } catch (...) {
            self.m_Failure = std::current_exception();
            XML_StopParser(self.m_Parser.get(), XML_FALSE);
        }
    }
    std::string Fault() const {
        const XML_Error error = XML_GetErrorCode(m_Parser.get());
        if (error == XML_ERROR_NO_MEMORY) {
            throw std::bad_alloc();
        }
        const std::string line = std::to_string(XML_GetCurrentLineNumber(m_Parser.get()));
        return "line " + line + ": " + XML_ErrorString(error);
    }

    Builder& m_Builder;
    std::unique_ptr<XML_ParserStruct, Closer> m_Parser{XML_ParserCreate(nullptr)};
    std::exception_ptr m_Failure;
};

} // namespace

SmartPtr<ISuperCollection> ReadXml(std::string_view text, std::string& fault) {
    const auto root = TextBranch::Make();
    Builder builder(*root.Get());
    fault = Reader(builder).Read(text);
    builder.EndAll();
    if (!fault.empty()) {
        root->AppendLeaf(fault);
    }
    return SmartPtr<ISuperCollection>(root.Get());
}
