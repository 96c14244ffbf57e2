// The texts the PostgreSQL engine reads and writes besides rows: '?' marks
// numbered as $n, SQLSTATE codes mapped onto sqldb::Code, bytea values
// decoded, COPY fields escaped, and the connection string shown without its
// password. No server or libpq call here, so all of it is tested alone.
#ifndef PLATFORM_SQLDB_PG_TEXT_H_
#define PLATFORM_SQLDB_PG_TEXT_H_

#include <string>
#include <string_view>
#include <vector>

#include "platform/sqldb/sqldb.h"

namespace sqldb {

// The offsets of the '?' marks of `sql` outside string literals, quoted
// names and comments, in order.
std::vector<size_t> MarkOffsets(std::string_view sql);

// `sql` with its '?' marks numbered $1, $2, ...; *count gets their number.
std::string NumberMarks(std::string_view sql, int* count);

// The code for a five-character SQLSTATE; `isQuery` tells a statement that
// only reads (a read refused for privileges is no access, a write refused
// is a read-only role).
Code CodeForSqlState(std::string_view state, bool isQuery);

// The code for a connection that could not be made, from libpq's message
// (the server sends no SQLSTATE before the session stands).
Code CodeForConnectFailure(std::string_view message);

// The reason in libpq's connection failure message: the text after the last
// "failed: " of its first line, or that line.
std::string ConnectFailureReason(std::string_view message);

// Decodes bytea's hex output ("\x0aff") into *out; false for another form.
bool DecodeByteaHex(std::string_view text, std::string* out);

// Appends `text` to *out as one field of COPY's text format.
void AppendCopyText(std::string_view text, std::string* out);
// Appends the bytes as a bytea field of COPY's text format.
void AppendCopyBytea(const void* data, size_t size, std::string* out);

}  // namespace sqldb

#endif  // PLATFORM_SQLDB_PG_TEXT_H_
