// The catalog database's schema (platform/emmlib/schema.sql, and
// schema_postgresql.sql for a catalog on a PostgreSQL server), compiled into
// the library so that stashwell-init and tests create catalogs without
// looking for data files.
#ifndef PLATFORM_EMMLIB_CATALOG_SCHEMA_H_
#define PLATFORM_EMMLIB_CATALOG_SCHEMA_H_

// The DDL text, to be run as a whole (for example with sqldb::Database::Exec).
extern const char kCatalogSchemaSql[];
// The same tables, functions and indexes for PostgreSQL, to be run as a
// whole in an empty database (creates the schemas).
extern const char kCatalogSchemaPostgresSql[];

#endif  // PLATFORM_EMMLIB_CATALOG_SCHEMA_H_
