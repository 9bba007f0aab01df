#pragma once

#include <oVELDRA/ConexionDB.h>
#include <oVELDRA/oveldra.h>

#include <memory>

// What the opaque types of the C interface are. Their names are those of the public header.

struct oveldra_connection
{
    std::shared_ptr<oVELDRA::ConexionDB> connection;
};

struct oveldra_recordset
{
    std::unique_ptr<oVELDRA::Recordset> records;
};
