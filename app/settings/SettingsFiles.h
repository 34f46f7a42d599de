#pragma once

#include "framework/interfaces/Unknown.h"

#include <string>

// The settings of a control in files. All throw DocumentError, with one line that names the file;
// loading throws DocumentMissing when there is none. A save that fails leaves the file as it was.

/// A document: all settings that the control keeps, with its icons.
void LoadDocument(IUnknown* control, const std::string& file);
void SaveDocument(IUnknown* control, const std::string& file);

/// Throws what SaveDocument would throw for the file, and leaves it alone.
void CheckDocument(const std::string& file);

/// XML elements, named by the host's string table: the settings that have a text. `control` has to
/// be built on the framework's template for numbered parameters, as the tree control is. Loading
/// takes what the control takes, and tells on standard error, with its line, what the settings page
/// would not; a file with anything else in it, comments too, is not saved over.
void LoadXml(IUnknown* control, const std::string& file);
void SaveXml(IUnknown* control, const std::string& file);

/// Loads by one of the above; false when there is no such file, and nothing happened.
bool LoadIfThere(void (*load)(IUnknown* control, const std::string& file), IUnknown* control,
    const std::string& file);
