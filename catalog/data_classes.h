// The data classifications of the catalog: an owner of the list that
// db_getDATA_CLASS_LIST returns, and the name lookup of the user-form
// printers.
#ifndef CATALOG_DATA_CLASSES_H_
#define CATALOG_DATA_CLASSES_H_

#include <string>

#include "platform/emmlib/emm_records.h"

// Owns the classification list (in the catalog's order) and frees it with
// db_freeDATA_CLASS_LIST.
class DataClassList {
 public:
  DataClassList() = default;
  ~DataClassList();
  DataClassList(const DataClassList&) = delete;
  DataClassList& operator=(const DataClassList&) = delete;

  // Reads the list from the catalog; returns the catalog's status (the list
  // is empty unless it is 0).
  int Read();
  const DATA_CLASS_LIST* head() const { return head_; }
  size_t size() const;

 private:
  DATA_CLASS_LIST* head_ = nullptr;
};

// " (<name>)" of the data classification whose identifier is `classId`, or
// the empty text when there is none or the classifications cannot be read.
// The classification list is read from the catalog once per run.
std::string ConvClassIDtoClassName(const char* classId);

#endif  // CATALOG_DATA_CLASSES_H_
