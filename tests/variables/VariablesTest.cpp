// The fifteen variables and the references to them.
#include <gtest/gtest.h>

#include "support/TestContext.h"
#include "variables/VariableReference.h"
#include "variables/VariableTable.h"

namespace corvane {
namespace {

using test::failureOf;
using test::text;

class VariablesTest : public ::testing::Test {
  protected:
    test::TestContext run;
    VariableTable variables;
};

TEST_F(VariablesTest, FifteenAndNoMore) {
    variables.setNumericValue(5, -7);
    variables.setStringValue(10, "ten");
    EXPECT_EQ(variables.numericValue(5), -7);
    EXPECT_EQ(text(variables.stringValue(10)), "ten");
    EXPECT_EQ(failureOf([&] { variables.numericValue(6); }), "Invalid numeric variable number: 6");
    EXPECT_EQ(failureOf([&] { variables.setNumericValue(0, 1); }),
              "Invalid numeric variable number: 0");
    EXPECT_EQ(failureOf([&] { variables.stringValue(11); }), "Invalid string variable number: 11");
    EXPECT_EQ(failureOf([&] { variables.setStringValue(0, ""); }),
              "Invalid string variable number: 0");
}

TEST_F(VariablesTest, References) {
    const struct {
        const char* in;
        const char* out;  // the reference, or the failure
    } cases[] = {
        {"s10", "S10"},
        {"N01", "N1"},
        {"N1x", "N1"},
        {"S 3", "S3"},
        {"S+4", "S4"},
        {"S", "ctx Variable references must be at least 2 characters (e.g. N1 and S10)."},
        {"X1",
         "ctx Invalid variable reference (X1). Must use N or S as the variable type, e.g. "
         "N2 or S1."},
        {"S11", "ctx Variable number is invalid (11)"},
        {"N0", "ctx Variable number is invalid (0)"},
        {"N-1", "ctx Variable number is invalid (-1)"},
        {"Nx", "ctx Variable number is invalid (x)"},
    };
    for (const auto& [in, out] : cases) {
        VariableReference reference{};
        const std::string failure = failureOf([&] { resolveReference(reference, in, "ctx"); });
        const std::string result =
            failure == "no failure" ? reference.type + std::to_string(reference.number) : failure;
        EXPECT_EQ(result, out) << in;
    }
}

TEST_F(VariablesTest, Assignment) {
    assignValue({'N', 2}, " 12abc", "ctx");
    EXPECT_EQ(text(valueText({'N', 2})), "12");
    assignValue({'S', 2}, " as it stands ", "ctx");
    EXPECT_EQ(text(valueText({'S', 2})), " as it stands ");
    const auto assign = [] { assignValue({'N', 1}, "abc", "ctx"); };
    EXPECT_EQ(failureOf(assign), "ctx Invalid numeric expression in abc");
}

}  // namespace
}  // namespace corvane
