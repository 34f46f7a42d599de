#pragma once

#include "app/UsageError.h"
#include "host/sources/Source.h"

#include <cstdint>
#include <string>
#include <vector>

// The commands of treehost. Each prints its result on standard output and throws when it fails.

struct ShotOptions {
    std::string m_Path;             ///< of anything that ReadSource reads, or "-"
    std::string m_Out = "tree.png"; ///< relative to where the command was called, or "-"
    std::string m_Size = "480x640"; ///< in pixels
    double m_Scale = 1;             ///< the picture's pixels along one of these
    int32_t m_Scroll = 0;           ///< the first row shown
    std::vector<int32_t> m_Open;    ///< rows to open, one after the other
    int32_t m_Depth = 0;            ///< levels to open
    bool m_Page = false;            ///< with the settings page beside the tree
    std::string m_Document;         ///< the settings to show it with, absolute; "" for none
    std::string m_Theme;            ///< a theme's name; "" for the colours of the settings
    bool m_HasGuides = false;       ///< with lines from open rows along what is below them
    SourceKind m_Kind = SourceKind::kByContent;
};

/// Draws the tree to a PNG file and prints the file's name, or prints the picture itself.
void RunShot(const ShotOptions& options);

struct ReplayOptions {
    std::string m_Path;
    std::string m_Script;      ///< a file, or "-"
    std::string m_Shots = "."; ///< the folder of the pictures
    std::string m_Size = "480x640";
};

/// Plays a script of input and prints what the control returns and reports.
void RunReplay(const ReplayOptions& options);

struct WindowOptions {
    std::string m_Path;
    std::string m_Size = "480x640";
    double m_Scale = 0;     ///< the display's pixels along one of these; 0 for its own choice
    bool m_Record = false;  ///< print what replay prints
    std::string m_Document; ///< the settings, loaded if there are any, and saved; as for a shot
    std::string m_Theme;    ///< as for a shot
    bool m_HasGuides = false;
    SourceKind m_Kind = SourceKind::kByContent;
};

/// Shows the tree in a window until that is closed.
void RunWindow(const WindowOptions& options);

struct RowsOptions {
    std::string m_Path;
    int32_t m_Depth = 0;
    std::string m_Find;    ///< only rows whose label holds it, in whatever case; "" for all
    bool m_AsJson = false; ///< an array of an object for each row
    SourceKind m_Kind = SourceKind::kByContent;
};

/// Prints the visible rows.
void RunRows(const RowsOptions& options);

struct SettingsOptions {
    std::vector<std::string> m_Set; ///< NAME=VALUE, each with a display name or a number
    bool m_List = false;
    std::string m_Document; ///< loaded and saved; absolute, "" for none
    std::string m_Xml;      ///< the same in XML
};

/// Loads the settings of a new control from the document or, when that is not there, from the XML
/// file, changes them, and prints them when asked to or when none is changed or kept. Changed
/// settings are saved to both files, others to the one that they do not come from. One has to be
/// there unless something is changed.
void RunSettings(const SettingsOptions& options);

struct InfoOptions {
    bool m_AsJson = false;
    bool m_Paths = false; ///< what is loaded from where instead, which needs nothing loaded
};

/// Prints the control's interfaces and parameters.
void RunInfo(const InfoOptions& options);

struct ValidateOptions {
    std::string m_Module;    ///< absolute; "" only for a list
    std::string m_Component; ///< "" for the only one
    bool m_List = false;
    std::string m_Only; ///< a regular expression for names of checks
    bool m_AsJson = false;
    std::string m_JUnit; ///< absolute, "" for none
    bool m_InProcess = false;
    int32_t m_TimeLimit = 300; ///< of each check, in seconds
};

/// Holds a component of a module to what every module promises, and prints how it did.
void RunValidate(const ValidateOptions& options);
