#include "app/validate/Exports.h"

#include "host/components/Module.h"

#include <cstring>
#include <elf.h>
#include <fstream>
#include <iterator>
#include <link.h>

namespace {

/// The file's bytes, read as the records that stand in them.
class Image {
public:
    explicit Image(const std::filesystem::path& file) : m_File(file.string()) {
        std::error_code error;
        if (!std::filesystem::is_regular_file(file, error)) {
            throw ModuleError(
                (std::filesystem::exists(file, error) ? "not a file: " : "no such file: ") +
                m_File);
        }
        std::ifstream stream(file, std::ios::binary);
        m_Bytes.assign(std::istreambuf_iterator<char>(stream), {});
    }

    template <class Record>
    Record At(uint64_t offset) const {
        Record record;
        if (offset > m_Bytes.size() || m_Bytes.size() - offset < sizeof(record)) {
            Refuse();
        }
        std::memcpy(&record, m_Bytes.data() + offset, sizeof(record));
        return record;
    }
    std::string TextAt(uint64_t offset) const {
        if (offset >= m_Bytes.size()) {
            Refuse();
        }
        return m_Bytes.c_str() + offset; // up to the zero
    }
    [[noreturn]] void Refuse() const {
        throw ModuleError("not a library of this machine: " + m_File);
    }

private:
    std::string m_File;
    std::string m_Bytes;
};

using Header = ElfW(Ehdr);
using Section = ElfW(Shdr);
using Symbol = ElfW(Sym);

bool IsLibraryOfThisMachine(const Header& header) {
    constexpr unsigned char kClass = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
    return std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 &&
           header.e_ident[EI_CLASS] == kClass && header.e_type == ET_DYN;
}

// The low and the high half of a symbol's information are coded alike for both sizes of machine.
bool IsShown(const Symbol& symbol) {
    const unsigned binding = ELF32_ST_BIND(symbol.st_info);
    return symbol.st_shndx != SHN_UNDEF && symbol.st_name != 0 &&
           (binding == STB_GLOBAL || binding == STB_WEAK || binding == STB_GNU_UNIQUE);
}

} // namespace

std::vector<ExportedSymbol> ExportedSymbols(const std::filesystem::path& file) {
    const Image image(file);
    const auto header = image.At<Header>(0);
    if (!IsLibraryOfThisMachine(header)) {
        image.Refuse();
    }
    const auto sectionAt = [&](uint64_t number) {
        return image.At<Section>(header.e_shoff + number * sizeof(Section));
    };
    std::vector<ExportedSymbol> symbols;
    for (unsigned number = 0; number < header.e_shnum; ++number) {
        const Section section = sectionAt(number);
        if (section.sh_type != SHT_DYNSYM) {
            continue;
        }
        const Section names = sectionAt(section.sh_link);
        for (uint64_t place = 0; place < section.sh_size; place += sizeof(Symbol)) {
            const auto symbol = image.At<Symbol>(section.sh_offset + place);
            if (IsShown(symbol)) {
                symbols.push_back({.m_Name = image.TextAt(names.sh_offset + symbol.st_name),
                    .m_IsUnique = ELF32_ST_BIND(symbol.st_info) == STB_GNU_UNIQUE});
            }
        }
    }
    return symbols;
}
