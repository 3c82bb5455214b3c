#pragma once

namespace bound {

/// Throws unless a command manager is installed: the library does not check that itself.
void requireManager();

} // namespace bound
