// Strings, arc records, counting, messages and the texts made from class names.
#include <gmock/gmock.h>

#include <clocale>
#include <cstdint>
#include <limits>
#include <stdexcept>
#include <string>
#include <vector>

#include "frame/naming/naming.h"
#include "tavrel/core.h"

namespace tav {

void PrintTo(const DString& text, std::ostream* out)
{
    *out << '"' << text.c_str() << '"';
}

namespace {

TEST(DString, LowersAsciiLettersInAnyLocale)
{
    for (const char* locale : {"C", "tr_TR.UTF-8"}) {
        std::setlocale(LC_ALL, locale);  // stays as it is where the locale is not installed
        EXPECT_EQ(DString("CLSID_%1@[`{\xC4\xD6Z").toLower(), DString("clsid_%1@[`{\xC4\xD6z"));
    }
    std::setlocale(LC_ALL, "C");
}

TEST(DString, TakesPartsOut)
{
    const DString text("quon_calcora");
    const std::tuple<int, int, const char*> parts[] = {{0, -1, "quon_calcora"},
                                                       {5, -1, "calcora"},
                                                       {5, 3, "cal"},
                                                       {11, 9, "a"},
                                                       {12, -1, ""},
                                                       {99, 2, ""},
                                                       {-4, 4, "quon"},
                                                       {3, 0, ""}};
    for (const auto& [position, length, part] : parts)
        EXPECT_EQ(text.mid(position, length), DString(part));
}

TEST(DString, FindsText)
{
    const auto any = CaseSensitivity::Insensitive;
    const auto exact = CaseSensitivity::Sensitive;
    const std::tuple<const char*, int, CaseSensitivity, int> searches[] = {
        {"_", 0, exact, 1},  {"_", 2, exact, 3}, {"_", 4, exact, -1},
        {"B", 0, exact, -1}, {"B", 0, any, 2},   {"abc", 0, exact, -1},
        {"a", -7, exact, 0}, {"", 2, exact, 2},  {"", 9, exact, -1}};
    for (const auto& [text, start, sensitivity, position] : searches)
        EXPECT_EQ(DString("a_b_").indexOf(text, start, sensitivity), position) << text;
    EXPECT_EQ(DString(nullptr).indexOf("x"), -1);
}

TEST(DString, FillsTheLowestMarker)
{
    const std::tuple<const char*, const char*, int, const char*> cases[] = {
        {"%1 of %2", "3", 0, "3 of %2"},
        {"%2 of %7", "3", 0, "3 of %7"},
        {"%1%1", "x", 0, "xx"},
        {"%2 %1 %2", "%2", 0, "%2 %2 %2"},
        {"%10 %9", "x", 0, "%10 x"},
        {"%12 a1 %11", "x", 0, "%12 a1 x"},
        {"no marker %", "x", 0, "no marker %"},
        {"%0 %a %%1", "x", 0, "%0 %a %x"},
        {"[%1]", "x", 3, "[..x]"},
        {"[%1]", "x", -3, "[x..]"},
        {"[%1]", "long", 3, "[long]"}};
    for (const auto& [pattern, text, width, filled] : cases)
        EXPECT_EQ(DString(pattern).arg(text, width, '.'), DString(filled)) << pattern;
}

TEST(Naming, DerivesTheTextsFromModuleAndClass)
{
    const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
        {"quon_calcora", "commonFunc", "quon_calcora.commonfunc", "clsid_calcora_commonfunc"},
        {"CALCORA", "CUnit", "calcora.cunit", "clsid_calcora_cunit"},
        {"a_b_C", "X", "a_b_c.x", "clsid_b_c_x"},
        {"a_", "X", "a_.x", "clsid__x"},
        {"a_%1", "X", "a_%1.x", "clsid_x_%2"},
        {"a_%2", "X", "a_%2.x", "clsid_x_x"},
        {"", "", ".", "clsid__"},
    };
    for (const auto& [module, name, full, classId] : cases) {
        EXPECT_EQ(calcora::fullClassName(module, name), DString(full));
        EXPECT_EQ(calcora::classIdString(module, name), DString(classId));
    }
}

TEST(Variant, KeepsAnArcRecord)
{
    const Radian record{7, Point3DF(Point2DF(1.5, -2.5), 1e300)};
    List<Variant> records;
    records.append(record);
    EXPECT_EQ(records.at(0).toRadian(), record);
    EXPECT_EQ(Variant().toRadian().segmentIndex, -1);
}

TEST(LockedCounting, WrapsIn32Bits)
{
    constexpr long kMost = std::numeric_limits<std::int32_t>::max();
    long count = kMost;
    EXPECT_EQ(lockedIncrement(&count), -kMost - 1);
    EXPECT_EQ(count, -kMost - 1) << "the stored value is the one returned";
    EXPECT_EQ(lockedDecrement(&count), kMost);
    EXPECT_EQ(lockedIncrement(nullptr), 0);
    EXPECT_EQ(lockedDecrement(nullptr), 0);
}

class Messages : public testing::Test {
protected:
    Messages() : before_(setMessageTarget({&Messages::sink, this})) {}
    ~Messages() override { setMessageTarget(before_); }

    static void sink(const MessageRecord& record, void* context)
    {
        auto& self = *static_cast<Messages*>(context);
        self.lines_.push_back(std::string(record.kind == MessageKind::Debug ? "D " : "A ") +
                              record.file + ":" + std::to_string(record.line) + " " +
                              record.function + " " + record.text);
        if (self.nested_) tavAssert("nested", "sink", 1);
        if (self.throwing_) throw std::runtime_error("sink");
    }

    MessageTarget before_;
    std::vector<std::string> lines_;
    bool nested_ = false;
    bool throwing_ = false;
};

TEST_F(Messages, GoToTheSinkOneLinePerStream)
{
    {
        TavDebug line = MessageLogger("file.cpp", 12, "work").debug();
        line << "step "
             << "one" << nullptr;
        EXPECT_TRUE(lines_.empty()) << "a line is written when it is complete";
    }
    tavAssert("IMatrix", "geometric", 34);
    tavAssert(nullptr, nullptr, 0);
    EXPECT_THAT(lines_, testing::ElementsAre("D file.cpp:12 work step one",
                                             "A geometric:34  IMatrix", "A :0  "));
}

TEST_F(Messages, OfASinkAndOfFailingSinksGoToStandardError)
{
    testing::internal::CaptureStderr();
    nested_ = true;
    tavAssert("outer", "file", 1);
    nested_ = false;
    throwing_ = true;
    tavAssert("thrown at", "file", 2);
    setMessageTarget({});
    MessageLogger("file", 3, "work").debug() << "plain";
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "assertion failed: nested (sink:1)\n"
              "assertion failed: thrown at (file:2)\n"
              "debug: plain (file:3)\n");
    EXPECT_EQ(lines_.size(), 2u);
}

}  // namespace
}  // namespace tav
