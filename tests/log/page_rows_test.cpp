#include "log/page_rows.h"

#include "log/log_fixture.h"

namespace velk {
namespace {

using Texts = std::vector<std::string>;

class PageRows : public test::LogFixture {
 protected:
  PageRows() {
    NameChannels({"Pressure"});
    StartLog(path);
  }

  static double At(int day, int hour, int minute, double second = 0) {
    return JoinDateTime(DateSerial(2026, 3, day), TimeOfDay(hour, minute, second));
  }
  void Record(std::initializer_list<double> times) {
    for (const double time : times) AppendLogRow(time);
  }
  static Texts Of(const std::unique_ptr<RowSource>& rows) {
    Texts times;
    if (!rows) return times;
    do times.push_back(FormatDate(rows->Row().time, "dd hh:mm:ss"));
    while (rows->Next());
    return times;
  }
};

TEST_F(PageRows, LieBetweenTheWholeMinutesOfBothBounds) {
  Record({At(14, 9, 29, 59), At(14, 9, 30, 0), At(14, 9, 31, 20), At(14, 9, 32, 0), At(14, 9, 32, 1)});
  LogReader reader(path);
  EXPECT_EQ(Of(RowsOfPage(reader, At(14, 9, 30, 40), At(14, 9, 32, 50))),
            (Texts{"14 09:30:00", "14 09:31:20", "14 09:32:00"}));
}

TEST_F(PageRows, OverMidnightEndWithTheDay) {
  Record({At(14, 23, 57, 59), At(14, 23, 58, 0), At(14, 23, 59, 59), At(15, 0, 0, 0), At(15, 0, 1, 0)});
  LogReader reader(path);
  EXPECT_EQ(Of(RowsOfPage(reader, At(14, 23, 58), At(15, 0, 2))), (Texts{"14 23:58:00", "14 23:59:59"}));
}

TEST_F(PageRows, WithoutARowGoOnToTheNextOneAndNoFurther) {
  Record({At(14, 9, 30), At(14, 9, 40), At(14, 9, 41), At(14, 9, 42)});
  LogReader reader(path);
  EXPECT_EQ(Of(RowsOfPage(reader, At(14, 9, 31), At(14, 9, 35))), Texts{"14 09:40:00"});
}

TEST_F(PageRows, FromAMinuteOnEndWithTheFirstBeyondTheBound) {
  Record({At(14, 9, 30, 5), At(14, 9, 30, 30), At(14, 9, 31, 0), At(14, 9, 31, 10), At(14, 9, 31, 20)});
  LogReader reader(path);
  EXPECT_EQ(Of(RowsFrom(reader, At(14, 9, 30, 20), At(14, 9, 31, 5))),
            (Texts{"14 09:30:05", "14 09:30:30", "14 09:31:00", "14 09:31:10"}));
}

TEST_F(PageRows, AreNoneBehindTheLastRow) {
  Record({At(14, 9, 30)});
  LogReader reader(path);
  EXPECT_EQ(RowsOfPage(reader, At(14, 9, 31), At(14, 9, 35)), nullptr);
  EXPECT_EQ(RowsFrom(reader, At(15, 9, 30), At(15, 9, 31)), nullptr);
}

TEST_F(PageRows, OfAnEmptyLogAreNone) {
  LogReader reader(path);
  EXPECT_EQ(RowsOfPage(reader, At(14, 9, 30), At(14, 9, 35)), nullptr);
}

TEST_F(PageRows, InNoOrderAndWithoutAnIndexAreFoundAllTheSame) {
  Record({At(14, 9, 40), At(14, 9, 30), At(14, 9, 31), At(14, 9, 33)});
  log.Finalise();
  Connection::Open(path, OpenMode::ReadWrite)->Execute("DROP INDEX logDataTimes");
  LogReader reader(path);
  EXPECT_EQ(Of(RowsFrom(reader, At(14, 9, 31), At(14, 9, 35))), (Texts{"14 09:40:00", "14 09:31:00", "14 09:33:00"}));
  EXPECT_EQ(Of(RowsOfPage(reader, At(14, 9, 31), At(14, 9, 35))), (Texts{"14 09:31:00", "14 09:33:00"}));
}

TEST_F(PageRows, AreTheSameInAFileWithoutAnIndex) {
  Record({At(14, 9, 30), At(14, 9, 31), At(14, 9, 32), At(14, 9, 40)});
  log.Finalise();
  Connection::Open(path, OpenMode::ReadWrite)->Execute("DROP INDEX logDataTimes");
  LogReader reader(path);
  EXPECT_EQ(Of(RowsOfPage(reader, At(14, 9, 31), At(14, 9, 35))), (Texts{"14 09:31:00", "14 09:32:00"}));
  EXPECT_EQ(Of(RowsOfPage(reader, At(14, 9, 33), At(14, 9, 35))), Texts{"14 09:40:00"});
}

}  // namespace
}  // namespace velk
