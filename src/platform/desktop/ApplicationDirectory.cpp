#include "platform/desktop/ApplicationDirectory.h"

#include "base/Text.h"
#include "platform/Files.h"

namespace kavendra {

bool isApplicationDirectory(const std::string& path) {
    return lowercased(path).ends_with(".app") && isDirectory(path);
}

} // namespace kavendra
