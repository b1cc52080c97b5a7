#include <gtest/gtest.h>

#include "store/world.h"

namespace store_tests {
namespace {

const std::string& notes() {
  static const std::string text =
      header + noteLine(1, R"("Form":"qbProfile","FilterSetting":"1","REPLICAID":"00AB")") +
      noteLine(2, R"("Form":"qbprofile","FilterSetting":1,"REPLICAID":"00AC")") +
      noteLine(3, R"("form":"QBPROFILE","FilterSetting":"0","Empty":[])") +
      noteLine(4, R"("Form":"qbEvent","Names":["a","B"],"$Size_2":2.5,"Empty":"")") +
      noteLine(5, R"("Text":"a\"b\\c","Type":"Person","ActiveConfiguration":"Yes",)"
                  R"("When":{"time":"2012-05-30T14:07:00Z"})") +
      R"({"note":6,"profile":"p","items":{"Form":"qbprofile","FilterSetting":"1"}})"
      "\n";
  return text;
}

TEST(Formula, SelectsExactlyTheNotesThatItSays) {
  const World world(notes());
  const DBHANDLE db = openDatabase();
  const std::pair<const char*, const char*> rows[] = {
      {R"(SELECT Form="qbEvent")", "4"},
      {R"(SELECT @LowerCase(Form) = "qbprofile" & FilterSetting="1")", "1"},
      {R"(SELECT @LowerCase(Form) = "qbprofile" & REPLICAID="00AC")", "2"},
      {R"(SELECT ActiveConfiguration ="Yes")", "5"},
      {R"(SELECT @LowerCase(Form) ="qbsenderfilter")", ""},
      {R"(SELECT Type="Person")", "5"},
      {R"(SELECT Type="person")", ""},
      {"SELECT @All", "1 2 3 4 5"},
      {"select@aLL", "1 2 3 4 5"},
      {"\tSELECT\r\n(  ( @ALL )\n)", "1 2 3 4 5"},
      {"SELECT !@All", ""},
      {R"(SELECT !!(Form="qbEvent"))", "4"},
      {R"(SELECT FORM!="qbEvent")", "1 2 3 5"},
      {R"(SELECT "qbEvent"=fOrM)", "4"},
      {R"(SELECT Absent="")", "1 2 3 4 5"},
      {R"(SELECT Absent!="x" & Form=Absent)", "5"},
      {"SELECT Absent=Missing", "1 2 3 4 5"},
      {"SELECT FilterSetting=1", "2"},
      {R"(SELECT FilterSetting="1")", "1"},
      {"SELECT $Size_2=2.5", "4"},
      {"SELECT $Size_2 = 25e-1 & 1 != -1 & -0.5=-0.5", "4"},
      {R"(SELECT Names="B")", "4"},
      {R"(SELECT Names="b")", ""},
      {R"(SELECT @LowerCase(Names)="b")", "4"},
      {R"(SELECT Names!="a")", "1 2 3 5"},
      {R"(SELECT Empty="")", "1 2 4 5"},
      {R"(SELECT Empty!="")", "3"},
      {R"(SELECT @UpperCase(@LowerCase(Form))="QBEVENT")", "4"},
      {"SELECT @UpperCase($Size_2)=2.5", "4"},
      {R"(SELECT Text="a\"b\\c")", "5"},
      {"SELECT When=When", "1 2 3 4 5"},
      {R"(SELECT When="")", "1 2 3 4"},
      // The rank of the operators.
      {R"(SELECT @All | @All & !@All)", "1 2 3 4 5"},
      {R"(SELECT (@All | @All) & !@All)", ""},
      {R"(SELECT !(Form="qbEvent") & Form!="qbProfile" | Type="Person")", "2 3 5"},
      {R"(SELECT Form="qbEvent" | Form="qbProfile" | Form="x")", "1 4"},
      {R"(SELECT Form="qbEvent" & Names="a" & Names="B")", "4"},
  };
  for (const auto& [formula, ids] : rows) EXPECT_EQ(found(db, formula), ids) << formula;
}

// "<words> at <line>:<column>, <offset>+<length>"; checks what a failure leaves alone.
std::string failure(const std::string& formula) {
  FORMULAHANDLE handle = 7;
  STATUS error = 0;
  WORD compiled = 7;
  WORD line = 0;
  WORD column = 0;
  WORD offset = 0;
  WORD length = 0;
  const STATUS status =
      library().NSFFormulaCompile(nullptr, 0, formula.data(), static_cast<WORD>(formula.size()),
                                  &handle, &compiled, &error, &line, &column, &offset, &length);
  EXPECT_EQ(error, status);
  EXPECT_TRUE(status == 0 || (handle == 7 && compiled == 7)) << formula;
  return wordsOf(status) + " at " + std::to_string(line) + ":" + std::to_string(column) + ", " +
         std::to_string(offset) + "+" + std::to_string(length);
}

TEST(Formula, WhatIsNotKnownDoesNotCompile) {
  const World world;
  const std::string noSelect = "The formula does not begin with SELECT at ";
  const std::string unexpected =
      "The formula has something that the library does not understand at ";
  const std::string ends = "The formula ends before it is complete at ";
  const std::string notClosed = "A text in the formula has no closing quotation mark at ";
  const std::string function = "The formula has a function that the library does not know at ";
  const std::string noCondition = "The formula has a value where only a condition can stand at ";
  const std::string noValue = "The formula has a condition where only a value can stand at ";
  const std::pair<std::string, std::string> rows[] = {
      {"", noSelect + "1:1, 0+0"},
      {R"(Form="x")", noSelect + "1:1, 0+4"},
      {"SELECTED", noSelect + "1:1, 0+8"},
      {"SELECT", ends + "1:7, 6+0"},
      {"SELECT Form=", ends + "1:13, 12+0"},
      {"SELECT (@All", ends + "1:13, 12+0"},
      {"SELECT @LowerCase", ends + "1:18, 17+0"},
      {"SELECT @All &", ends + "1:14, 13+0"},
      {"SELECT\n Form=\"x", notClosed + "2:7, 13+2"},
      {"SELECT \"x\\\"", notClosed + "1:8, 7+4"},
      {"SELECT @Contains(Form;\"x\")", function + "1:8, 7+9"},
      {"SELECT @", function + "1:8, 7+1"},
      {"SELECT @All()", unexpected + "1:12, 11+1"},
      {"SELECT @LowerCase(Form;Type)=\"x\"", unexpected + "1:23, 22+1"},
      {"SELECT @All;", unexpected + "1:12, 11+1"},
      {"SELECT @All)", unexpected + "1:12, 11+1"},
      {"SELECT )", unexpected + "1:8, 7+1"},
      {"SELECT Form==\"x\"", unexpected + "1:13, 12+1"},
      {"SELECT Form<>\"x\"", unexpected + "1:12, 11+1"},
      {"SELECT Size > 1", unexpected + "1:13, 12+1"},
      {"SELECT Size = 1 + 1", unexpected + "1:17, 16+1"},
      {"SELECT Size = 1e999", unexpected + "1:15, 14+5"},
      {"SELECT Size = 12x", unexpected + "1:17, 16+1"},
      {"SELECT Form=\"x\":\"y\"", unexpected + "1:16, 15+1"},
      {"SELECT Form=\"x\" Type", unexpected + "1:17, 16+4"},
      {"SELECT SELECT=\"x\"", unexpected + "1:8, 7+6"},
      {"SELECT Form={x}", unexpected + "1:13, 12+1"},
      {std::string("SELECT @All\0", 12), unexpected + "1:12, 11+1"},
      {"SELECT Form", noCondition + "1:8, 7+4"},
      {"SELECT 1", noCondition + "1:8, 7+1"},
      {"SELECT !Form=\"x\"", noCondition + "1:9, 8+4"},
      {"SELECT @All & (Form)", noCondition + "1:15, 14+6"},
      {"SELECT @LowerCase(Form)", noCondition + "1:8, 7+16"},
      {"SELECT Form=\"x\"=\"y\"", noValue + "1:8, 7+8"},
      {"SELECT 1=!@All", noValue + "1:10, 9+5"},
      {"SELECT @LowerCase(@All)=\"x\"", noValue + "1:19, 18+4"},
      {"SELECT " + std::string(30000, '(') + "@All" + std::string(30000, ')'),
       "The formula is nested too deeply at 1:108, 107+1"},
      {"SELECT " + std::string(30000, '!') + "@All",
       "The formula is nested too deeply at 1:108, 107+1"},
  };
  for (const auto& [formula, expected] : rows)
    EXPECT_EQ(failure(formula), expected) << formula.substr(0, 60);
}

TEST(Formula, LengthIsNoLimit) {
  const World world(notes());
  std::string formula = R"(SELECT Form="qbEvent")";
  for (int i = 0; i < 5000; ++i) formula += R"(|Form="x")";
  EXPECT_EQ(found(openDatabase(), formula), "4");
  EXPECT_EQ(failure(formula), "No error at 0:0, 0+0");
  formula = "SELECT " + std::string(90, '(') + "@All" + std::string(90, ')');
  EXPECT_EQ(found(openDatabase(), formula), "1 2 3 4 5");
}

}  // namespace
}  // namespace store_tests
