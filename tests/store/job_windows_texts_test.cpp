#include <gtest/gtest.h>

#include "store/windows/frm_file_exist.h"
#include "store/windows/frm_inc_param_in_sum.h"
#include "support/window_texts.h"

namespace velk {
namespace {

using namespace test;

const std::string kFile = "/home/operator/работы/Скважина 1042 гидроразрыв пласта.mdb";

SummaryInclusion Inclusion(int channels) {
  SummaryInclusion inclusion;
  for (int i = 1; i <= channels; ++i)
    inclusion.parameters.push_back({i, "Давление на входе насоса № " + std::to_string(i), true});
  return inclusion;
}

frmFileExist* MakeFileExist(bool russian, bool compatible, bool sameOrder) {
  return russian ? new frmFileExist(RussianMessages(), RussianCaptions(), kFile, compatible, sameOrder)
                 : new frmFileExist({}, {}, kFile, compatible, sameOrder);
}

TEST(FrmFileExistTexts, AreThereInRussian) {
  const std::unique_ptr<frmFileExist> english(MakeFileExist(false, true, false));
  EXPECT_EQ(TextsWithoutRussian(*english, {"lblFile", "lblNote"}), kNone);
  const std::unique_ptr<frmFileExist> russian(MakeFileExist(true, true, false));
  EXPECT_EQ(russian->windowTitle(), "Файл уже существует !!");
  EXPECT_EQ(TextsLeftInEnglish(*russian), kNone);
  EXPECT_EQ(KeysMarkedTwice(*russian), kNone);
}

TEST(FrmFileExistTexts, FitWhereTextIsLarge) {
  const LargeText large(1.5);
  for (const auto& [compatible, sameOrder] : {std::pair(true, true), {true, false}, {false, false}}) {
    const std::unique_ptr<frmFileExist> window(MakeFileExist(true, compatible, sameOrder));
    window->show();
    EXPECT_EQ(TextsCutOff(*window), kNone) << compatible << sameOrder;
  }
}

TEST(FrmIncParamInSumTexts, AreThereInRussian) {
  const frmIncParamInSum english({}, Inclusion(2));
  EXPECT_EQ(TextsWithoutRussian(english, {"chk_1", "chk_2"}), kNone);
  const frmIncParamInSum russian(RussianCaptions(), Inclusion(2));
  EXPECT_EQ(russian.windowTitle(), "Включить в сводный отчёт");
  EXPECT_EQ(TextsLeftInEnglish(russian), kNone);
  EXPECT_EQ(KeysMarkedTwice(russian), kNone);
}

TEST(FrmIncParamInSumTexts, FitWhereTextIsLarge) {
  const LargeText large(1.5);
  for (const int channels : {1, 18, 64}) {
    frmIncParamInSum window(RussianCaptions(), Inclusion(channels));
    window.show();
    EXPECT_EQ(TextsCutOff(window), kNone) << channels;
  }
}

}  // namespace
}  // namespace velk
