// The one instance of the store's state; all zero until initialisation.

#include "eventlog/store_state.h"

namespace zusahpi::eventlog {

constinit StoreState store{};

} // namespace zusahpi::eventlog
