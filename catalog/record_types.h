// Bits of the record-type mask that selects what an image listing prints
// (-rt I, IC, ICF, ICFS give 1, 3, 7, 15).
#ifndef CATALOG_RECORD_TYPES_H_
#define CATALOG_RECORD_TYPES_H_

enum RecordType {
  RECORD_TYPE_IMAGE = 1,
  RECORD_TYPE_COPY = 2,
  RECORD_TYPE_FRAGMENT = 4,
  RECORD_TYPE_SNAPSHOT = 8,
};

#endif  // CATALOG_RECORD_TYPES_H_
