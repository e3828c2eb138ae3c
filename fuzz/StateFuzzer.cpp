#include "config/JSONEncoding.h"
#include "config/StateFile.h"
#include "fuzz/Require.h"
#include "fuzz/ScratchDirectory.h"

#include <cstdint>

using namespace kavendra;

/// Loading leaves the file unchanged. A state that was loaded and written is loaded as the same state. A new
/// width of a column is stored; storing it again is no change.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const ScratchDirectory scratch;
    const std::string file = stateFilePath(scratch.path);
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    writeBytes(file, bytes);

    const auto state = loadState(scratch.path);
    require(readBytes(file) == bytes);
    if (!state) {
        require(state.error().description == "State file is invalid: " + file);
        return 0;
    }
    require(writeState(scratch.path, *state).has_value());
    require(loadState(scratch.path) == *state);
    // Older settings files contain the widths in the same form.
    require(stateOfOlderSettings(readBytes(file)) == *state);

    for (const auto& [column, width] : state->columnWidths)
        if (const auto resized = widthsAfterResize(state->columnWidths, column, width + 0.5)) {
            require(resized->size() == state->columnWidths.size());
            require(!widthsAfterResize(*resized, column, resized->at(column)));
        }
    return 0;
}
