// The catalog database's schema (platform/emmlib/schema.sql), compiled into
// the library so that stashwell-init and tests create catalogs without
// looking for data files.
#ifndef PLATFORM_EMMLIB_CATALOG_SCHEMA_H_
#define PLATFORM_EMMLIB_CATALOG_SCHEMA_H_

// The DDL text, to be run as a whole (for example with sqlite3_exec).
extern const char kCatalogSchemaSql[];

#endif  // PLATFORM_EMMLIB_CATALOG_SCHEMA_H_
