#include "Formula/Formula.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iomanip>
#include <sstream>

using namespace OPX::KltAPI;

/// One formula in each line: whether its numbers are integers, the formula, what comes of it.
TEST(Formulas, HaveTheValuesOfTheTable)
{
    std::ifstream file(CAMERAS "/../Formulas.txt");
    int rows = 0;
    for (std::string kind, row; std::getline(file >> kind, row); ++rows)
    {
        const std::size_t arrow = row.find(" -> ");
        std::ostringstream result;
        try
        {
            const Formula formula(row.substr(1, arrow - 1), kind == "integer", {}, {});
            const Number number = formula.Evaluate({});
            if (number.IsReal())
                result << std::setprecision(17) << number.AsReal() << " (real)";
            else
                result << number.AsInteger();
        }
        catch (const FormulaError& error)
        {
            result << error.what();
        }
        EXPECT_EQ(result.str(), row.substr(arrow + 4)) << kind << row;
    }
    EXPECT_GT(rows, 80);
}
