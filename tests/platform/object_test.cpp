#include "platform/object.h"

#include <gtest/gtest.h>

#include <memory>

#include "map/map.h"

namespace vexel::test {
namespace {

TEST(Objects, AreMadeByNameAndKnowTheirClasses) {
  for (const char* name :
       {"CAreaData", "CVELAData", "CPolygon", "CMapOb", "CVELAMap", "CRectF", "CGif", "CMapGif"}) {
    const std::unique_ptr<CObject> object(CRuntimeClass::CreateObject(name));
    ASSERT_NE(object, nullptr) << name;
    EXPECT_STREQ(object->GetRuntimeClass()->className, name);
    EXPECT_TRUE(object->GetRuntimeClass()->IsDerivedFrom(CObject::GetThisClass()));
  }
  EXPECT_TRUE(CVELAMap::GetThisClass()->IsDerivedFrom(CMapOb::GetThisClass()));
  EXPECT_FALSE(CMapOb::GetThisClass()->IsDerivedFrom(CVELAMap::GetThisClass()));
  EXPECT_EQ(CRuntimeClass::CreateObject("CNothing"), nullptr);
}

TEST(Objects, ARecordStandsOnceAndUntilItIsTakenOut) {
  static constinit CRuntimeClass record{"COfAHost", nullptr, &CObject::GetThisClass};
  AfxClassInit(&record);
  AfxClassInit(&record);
  EXPECT_EQ(CRuntimeClass::FromName("COfAHost"), &record);
  EXPECT_EQ(CRuntimeClass::CreateObject("COfAHost"), nullptr);
  static constinit CRuntimeClass later{"CLater", nullptr, &CObject::GetThisClass};
  AfxClassInit(&later);
  AfxClassTerm(&record);
  EXPECT_EQ(CRuntimeClass::FromName("COfAHost"), nullptr);
  EXPECT_EQ(CRuntimeClass::FromName("CLater"), &later);
  AfxClassTerm(&later);
  AfxClassTerm(&later);
  EXPECT_EQ(CRuntimeClass::FromName("CLater"), nullptr);
}

}  // namespace
}  // namespace vexel::test
