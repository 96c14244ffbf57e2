// An open query whose rows are image-copy-fragment (or image-copy-target)
// combinations ordered by image, copy, fragment: read either as flat rows into
// a caller's buffer or as linked image records with their copies and
// fragments (or replication targets). The statement stays live between
// fetches; a row that starts an image beyond the batch is kept for the next
// fetch.
#ifndef PLATFORM_EMMLIB_RECORD_QUERY_H_
#define PLATFORM_EMMLIB_RECORD_QUERY_H_

#include <cstdint>
#include <memory>
#include <string>

#include "platform/emmlib/emm_records.h"
#include "platform/emmlib/image_rows.h"
#include "platform/emmlib/query_handles.h"
#include "platform/emmlib/result_row.h"
#include "platform/emmlib/statement.h"
#include "platform/sqldb/sqldb.h"

namespace emm {

class RecordQuery : public OpenQuery {
 public:
  // What each row holds: the image and copy columns followed by the
  // fragment or the target columns, the few columns of a summary row, or
  // those of a lifecycle row (image and copy, no fragment).
  enum class Detail { kFragments, kTargets, kSummary, kLifecycle };

  RecordQuery(Connection* connection, Detail detail) : OpenQuery(connection), detail_(detail) {}

  Detail detail() const { return detail_; }

  // Prepares `sql` and binds `params`; a library status.
  unsigned Start(const std::string& sql, const Params& params);

  // Steps to the first row, kept for the first fetch; *any is false when the
  // result is empty.
  unsigned Peek(bool* any);

  // Up to *count flat rows into `rows` (kFragments and kSummary); *count
  // receives the number written. EMMLIB_END_OF_DATA when no row was left.
  unsigned FetchRaw(unsigned* count, Legacy_ImageView* rows);

  // Up to *count images as a linked list in *list (null when none), each
  // with its copies (depth 2) and their fragments or targets (depth 3).
  // *count receives the number of images; *atEnd whether the result is
  // exhausted. On failure nothing is returned. Not for kSummary; kLifecycle
  // records go no deeper than copies.
  unsigned FetchList(int depth, unsigned* count, EMM_Image** list, bool* atEnd);

 private:
  // The next row, which row_ then reads: the kept one, or a new step. *row
  // false at the end.
  unsigned NextRow(bool* row);

  Detail detail_;
  std::unique_ptr<sqldb::Statement> stmt_;
  ResultRow row_;         // the statement's current row
  bool pending_ = false;  // the statement stands on a row not yet returned
  bool done_ = false;
  int64_t lastImageKey_ = 0;  // image of the last flat row returned
  RowTextLengths lengths_;    // of that row's image and copy texts
};

}  // namespace emm

#endif  // PLATFORM_EMMLIB_RECORD_QUERY_H_
