#include "platform/MacTools.h"

namespace kavendra {

MacTools macTools() {
    return MacTools::below({});
}

} // namespace kavendra
