#pragma once

#include <oVELDRA/ConexionDB.h>
#include <oVELDRA/oveldra.h>

#include <memory>

namespace oVELDRA::cinterface {

/// The connection over a host's table of functions. Throws RuntimeError 5 for a table with something missing; `host` is
/// the caller's then.
[[nodiscard]] std::shared_ptr<ConexionDB> connectHost(const oveldra_host_connection* functions, void* host);

} // namespace oVELDRA::cinterface
