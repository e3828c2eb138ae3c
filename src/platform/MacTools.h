#pragma once

#include <string>

namespace kavendra {

/// The programs and applications of macOS that are used by path.
struct MacTools {
    std::string open;      ///< open(1)
    std::string osascript; ///< osascript(1)
    std::string excel;     ///< the application directory of Microsoft Excel

    /// The tools in the directory tree below `root`, which has the layout of a Mac's file system.
    static MacTools below(const std::string& root) {
        return {.open = root + "/usr/bin/open",
                .osascript = root + "/usr/bin/osascript",
                .excel = root + "/Applications/Microsoft Excel.app"};
    }
};

/// Returns the tools of this system. Alone in its source file, so that a test program can be linked with
/// other tools.
MacTools macTools();

} // namespace kavendra
