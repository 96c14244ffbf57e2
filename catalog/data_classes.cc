// The data-classification list owner and the name lookup.
#include "catalog/data_classes.h"

#include <utility>
#include <vector>

#include "platform/emmlib/emmlib.h"

DataClassList::~DataClassList() {
  if (head_ != nullptr) db_freeDATA_CLASS_LIST(head_);
}

int DataClassList::Read() {
  if (head_ != nullptr) db_freeDATA_CLASS_LIST(head_);
  int status = 0;
  head_ = db_getDATA_CLASS_LIST(&status);
  if (status != 0 && head_ != nullptr) {
    db_freeDATA_CLASS_LIST(head_);
    head_ = nullptr;
  }
  return status;
}

size_t DataClassList::size() const {
  size_t n = 0;
  for (const DATA_CLASS_LIST* c = head_; c != nullptr; c = c->next) ++n;
  return n;
}

std::string ConvClassIDtoClassName(const char* classId) {
  // Identifier and name of every classification, read once per run.
  static const std::vector<std::pair<std::string, std::string>> classes = [] {
    std::vector<std::pair<std::string, std::string>> read;
    DataClassList list;
    if (list.Read() != 0) return read;
    for (const DATA_CLASS_LIST* c = list.head(); c != nullptr; c = c->next) {
      read.emplace_back(c->identifier, c->name);
    }
    return read;
  }();
  for (const auto& c : classes) {
    if (c.first == classId) return " (" + c.second + ")";
  }
  return std::string();
}
