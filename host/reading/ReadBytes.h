#pragma once

#include "host/reading/Descriptor.h"
#include "host/reading/ReadProgress.h"

#include <optional>
#include <string>

/// What there is of a text before it ends or fails, or before its progress makes an end of it.
struct ReadBytes {
    std::string m_Text = {};
    int m_Error = 0; ///< the system's number; ENOMEM where memory does not hold the rest
    bool m_IsCut = false;
};

/// A file that is open for reading, and closed with it; standard input for "-", which stays open.
class ByteSource {
public:
    /// A pipe that nobody writes to yet is waited for when it is read.
    explicit ByteSource(const std::string& path);

    /// Reads it to its end. `progress` may be null.
    ReadBytes Read(ReadProgress* progress) const;

private:
    size_t Size() const;

    int m_Number = 0; ///< of the descriptor, which is standard input unless there is a file
    std::optional<Descriptor> m_File;
    int m_Error = 0; ///< of opening it
};
