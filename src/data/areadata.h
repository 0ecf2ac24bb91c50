// One row of a data set.

#ifndef VEXEL_DATA_AREADATA_H_
#define VEXEL_DATA_AREADATA_H_

#include <limits>

#include "brindle/areastruct.h"
#include "platform/array.h"
#include "platform/export.h"
#include "platform/object.h"

// The one form of a missing value in memory: the lowest finite double, tested by exact equality. It
// sorts before every real value.
inline constexpr double NO_DATA_VALUE = std::numeric_limits<double>::lowest();

// The key of an area and its values, one for each column of the data set.
//
// Copying and assigning are peculiar, and callers rely on it: a copy takes the key and no values;
// assigning takes the key and as many values as the target already has.
class VEXEL_API CAreaData : public CObject {
 public:
  static CObject* CreateObject();
  static CRuntimeClass* GetThisClass();
  CRuntimeClass* GetRuntimeClass() const override;

  CAreaData() = default;
  explicit CAreaData(const CAreaStruct& key) : area(key) {}
  CAreaData(const CAreaData& other) : CObject(other), area(other.area) {}

  // Making one row from another that goes takes everything: so a growing list moves its rows.
  CAreaData(CAreaData&& other) noexcept = default;

  // Throws CInvalidArgException when the source has fewer values than the target.
  void operator=(const CAreaData& other);  // NOLINT: gives nothing, by custom

  // Nonzero when the keys are equal and so are the first values, as many as this row has. Throws
  // CInvalidArgException when the other row has fewer.
  int operator==(const CAreaData& other) const;

  const CAreaStruct& GetArea() const { return area; }
  double GetValue(int column) const { return values[column]; }
  void SetValue(int column, double value) { values[column] = value; }

  CAreaStruct area;
  vexel::GrowArray<double> values;
};

template <>
inline constexpr bool vexel::kIsRelocatable<CAreaData> = true;

#endif  // VEXEL_DATA_AREADATA_H_
