#include "host/status.h"

#include <gtest/gtest.h>

#include <cstring>

TEST(StatusTest, TextsAreTheStatusNames) {
  struct Case {
    Acad::ErrorStatus status;
    const char* text;
  };
  const Case cases[] = {
      {Acad::eOk, "eOk"},
      {Acad::eKeyNotFound, "eKeyNotFound"},
      {Acad::eWasErased, "eWasErased"},
      {Acad::eNotThatKindOfClass, "eNotThatKindOfClass"},
      {Acad::eWasOpenForWrite, "eWasOpenForWrite"},
      {Acad::eOnLockedLayer, "eOnLockedLayer"},
      {Acad::eInvalidExtents, "eInvalidExtents"},
      {static_cast<Acad::ErrorStatus>(99999), "Unknown error"},
  };
  for (const Case& c : cases) EXPECT_STREQ(Acad::acadErrorStatusText(c.status), c.text);
}
