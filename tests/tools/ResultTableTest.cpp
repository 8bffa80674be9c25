#include "tools/ResultTable.h"

#include <QApplication>
#include <QClipboard>
#include <QFile>
#include <QHeaderView>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace {

using ormalux::ResultList;
using ormalux::ResultTable;
using ormalux::ResultValue;

class ResultTableTest : public testing::Test
{
protected:
    ResultTableTest()
    {
        table.resize(500, 400);
        table.show();
        QApplication::processEvents();
        QObject::connect(&table, &ResultTable::resultSelected, [this](int index) { told.push_back(index); });
    }

    /// A click on the header of a column.
    void clickHeader(int column)
    {
        QHeaderView* const header = table.horizontalHeader();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {},
                          {header->sectionViewportPosition(column) + 5, header->height() / 2});
    }
    std::string cell(int row, int column) const
    {
        return table.model()->index(row, column).data().toString().toStdString();
    }
    std::vector<std::string> column(int column) const
    {
        std::vector<std::string> texts;
        for (int row = 0; row < table.model()->rowCount(); ++row)
            texts.push_back(cell(row, column));
        return texts;
    }

    const ResultList parts{{"key", "pixels", "yield"},
                           {{{std::string("b"), 9LL, 0.5}, CRect(0, 0, 99, 99)},
                            {{std::string("a,\"1\""), 100LL, -2.25}, CRect(10, 10, 19, 19)},
                            {{std::string("c\nd"), 10LL, 10.0}, CRect(15, 15, 30, 16)},
                            {{std::string("a,\"1\""), -3LL, 9.75}, CRect(200, 5, 200, 5)}}};
    ResultTable table;
    std::vector<int> told;
};

TEST_F(ResultTableTest, NumbersSortAsNumbersAndEqualTextsKeepTheirOrder)
{
    table.setResults(parts);
    using Texts = std::vector<std::string>;
    EXPECT_EQ(column(1), (Texts{"9", "100", "10", "-3"})); // as given until a header is clicked
    clickHeader(1);
    EXPECT_EQ(column(1), (Texts{"-3", "9", "10", "100"}));
    clickHeader(2);
    EXPECT_EQ(column(2), (Texts{"-2.250000", "0.500000", "9.750000", "10.000000"}));
    clickHeader(2);
    EXPECT_EQ(column(2), (Texts{"10.000000", "9.750000", "0.500000", "-2.250000"}));
    clickHeader(0);
    EXPECT_EQ(column(1), (Texts{"100", "-3", "9", "10"}));
    table.setResults(parts);
    EXPECT_EQ(column(1), (Texts{"9", "100", "10", "-3"}));
}

TEST_F(ResultTableTest, AResultIsKnownByItsIndexHoweverTheListIsSorted)
{
    std::mt19937 engine(7);
    ResultList many{{"n", "value"}, {}};
    for (long long i = 0; i < 500; ++i)
        many.rows.push_back({{i, double(engine() % 50)}, CRect(int(i), 0, int(i), 0)});
    table.setResults(many);
    for (int round = 0; round < 40; ++round) {
        table.model()->sort(int(engine() % 2), engine() % 2 ? Qt::AscendingOrder : Qt::DescendingOrder);
        const int index = int(engine() % 500);
        table.selectResult(index);
        ASSERT_EQ(table.selectedResult(), index);
        const int row = table.selectionModel()->selectedRows().front().row();
        ASSERT_EQ(cell(row, 0), std::to_string(index));
        table.model()->sort(1, Qt::AscendingOrder);
        ASSERT_EQ(table.selectedResult(), index); // the selection goes with its result
        ASSERT_EQ(table.selectAt(index, 0), index);
    }
    EXPECT_TRUE(told.empty()); // only the operator's own selection is told
}

TEST_F(ResultTableTest, AClickInThePictureTakesTheSmallestResultAndOneInTheListIsTold)
{
    table.setResults(parts);
    EXPECT_EQ(table.selectAt(16, 15), 2); // in three boxes
    EXPECT_EQ(table.selectAt(16, 19), 1);
    EXPECT_EQ(table.selectAt(99, 99), 0); // right and bottom belong to the box
    EXPECT_EQ(table.selectAt(200, 5), 3);
    EXPECT_EQ(table.selectAt(201, 5), -1);
    EXPECT_EQ(table.selectedResult(), 3);
    EXPECT_TRUE(told.empty());
    clickHeader(1);
    QTest::mouseClick(table.viewport(), Qt::LeftButton, {},
                      table.visualRect(table.model()->index(3, 0)).center());
    EXPECT_EQ(told, std::vector<int>{1});
}

TEST_F(ResultTableTest, CopiesTheSelectedRowsOrAllWithTheTitles)
{
    table.setResults(parts, {"Key", "개수"});
    table.setFocus();
    QTest::keyClick(&table, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
              "Key\t개수\tyield\nb\t9\t0.500000\na,\"1\"\t100\t-2.250000\nc d\t10\t10.000000\n"
              "a,\"1\"\t-3\t9.750000\n");
    clickHeader(1);
    table.selectResult(1);
    table.selectionModel()->select(table.model()->index(0, 0),
                                   QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QTest::keyClick(&table, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
              "Key\t개수\tyield\na,\"1\"\t-3\t9.750000\na,\"1\"\t100\t-2.250000\n");
}

TEST_F(ResultTableTest, CsvNamesTheColumnsQuotesWhatNeedsItAndIsWrittenAsSorted)
{
    QTemporaryDir folder;
    const QString file = folder.filePath("results.csv");
    table.setResults(parts, {"Key", "개수"});
    clickHeader(1);
    ASSERT_TRUE(table.exportCsv(file));
    QFile csv(file);
    ASSERT_TRUE(csv.open(QIODevice::ReadOnly));
    const QByteArray written = csv.readAll();
    EXPECT_EQ(written.toStdString(), "key,pixels,yield\n\"a,\"\"1\"\"\",-3,9.750000\nb,9,0.500000\n"
                                     "\"c\nd\",10,10.000000\n\"a,\"\"1\"\"\",100,-2.250000\n");
    EXPECT_FALSE(table.exportCsv(folder.filePath("none/results.csv")));
    EXPECT_FALSE(table.exportCsv(folder.path()));
}

TEST_F(ResultTableTest, ColumnsShareTheWidthAndCutNoNumber)
{
    ResultList wide = parts;
    wide.rows[1].values[1] = 123456789012LL;
    const auto widths = [this] {
        std::vector<int> found;
        for (int i = 0; i < 3; ++i)
            found.push_back(table.columnWidth(i));
        return found;
    };
    table.setResults(wide);
    const std::vector<int> roomy = widths();
    table.resize(120, 400);
    QApplication::processEvents();
    const std::vector<int> narrow = widths();
    EXPECT_EQ(roomy[0] + roomy[1] + roomy[2], 500 - 2 * table.frameWidth());
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(roomy[i] - narrow[i], roomy[0] - narrow[0], 1) << i;
        EXPECT_GT(narrow[i],
                  table.fontMetrics().horizontalAdvance(table.model()->index(1, i).data().toString()));
    }
}

} // namespace
