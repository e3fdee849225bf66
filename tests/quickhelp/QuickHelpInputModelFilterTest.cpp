#include "QuickHelpFixture.h"

#include "support/TestAccess.h"

#include <tarqa/housekeeping/QuickHelpInputModelFilter.h>

#include <QtGui/QStandardItemModel>

#include <memory>

namespace {

using namespace quickhelp_test;
using tarqa::housekeeping::QuickHelpInputModelFilter;
using tarqa::housekeeping::TestAccess;

/// Entries of the documents 7, 8 and of none, all attached to the view section.
struct Rows
{
    Rows()
    {
        for (AbstractQuickHelpInputEntry* const p_entry : {&seven, &eight, &none}) {
            p_entry->setAttached(true);
        }
        filter.setSourceModel(&list(QuickHelpSection::View));
    }

    Binding seven{7, "seven"};
    Binding eight{8, "eight"};
    Binding none{0, "none"};
    QuickHelpInputModelFilter filter{doc(7), nullptr};
};

TEST(QuickHelpInputModelFilter, IsDynamicAndHasAParent)
{
    QObject parent;
    auto* const p_filter = new QuickHelpInputModelFilter(doc(7), &parent);
    EXPECT_EQ(p_filter->parent(), &parent);
    EXPECT_TRUE(p_filter->dynamicSortFilter());
    EXPECT_EQ(
        QuickHelpInputModelFilter::staticMetaObject.superClass(), &QSortFilterProxyModel::staticMetaObject);
    EXPECT_STREQ(p_filter->metaObject()->className(), "tarqa::housekeeping::QuickHelpInputModelFilter");
}

/// Opens the protected operation.
class OpenFilter : public QuickHelpInputModelFilter
{
public:
    using QuickHelpInputModelFilter::filterAcceptsRow;
    using QuickHelpInputModelFilter::QuickHelpInputModelFilter;
};

TEST(QuickHelpInputModelFilter, AcceptsNothingWithoutSource)
{
    const OpenFilter filter(doc(7), nullptr);
    EXPECT_FALSE(filter.filterAcceptsRow(0, QModelIndex()));
    EXPECT_EQ(filter.rowCount(), 0);
}

TEST(QuickHelpInputModelFilter, ShowsItsDocumentAndThoseOfNone)
{
    Rows rows;
    EXPECT_EQ(texts(rows.filter), (Lines{"seven", "none"}));
    EXPECT_EQ(texts(rows.filter, Command), (Lines{"F5", "F5"}));
    EXPECT_EQ(rows.filter.roleNames().value(Command), "command");
}

TEST(QuickHelpInputModelFilter, HidesAndShowsWithTheEntry)
{
    Rows rows;
    EXPECT_EQ(rows.filter.rowCount(), 2);
    ModelLog log(rows.filter);
    rows.seven.setVisible(false);
    EXPECT_EQ(texts(rows.filter), Lines{"none"});
    EXPECT_EQ(log.take(), (Lines{"removing 0 0", "removed 0 0"}));
    rows.none.setVisible(false);
    EXPECT_TRUE(texts(rows.filter).empty());
    rows.seven.setVisible(true);
    EXPECT_EQ(texts(rows.filter), Lines{"seven"});
    rows.eight.setVisible(false);
    EXPECT_EQ(texts(rows.filter), Lines{"seven"});
}

TEST(QuickHelpInputModelFilter, ShowsAnotherDocument)
{
    Rows rows;
    rows.filter.setDocId(doc(8));
    EXPECT_EQ(texts(rows.filter), (Lines{"eight", "none"}));
    rows.filter.setDocId(doc(9));
    EXPECT_EQ(texts(rows.filter), Lines{"none"});
    rows.filter.setDocId(DocumentId::null());
    EXPECT_EQ(texts(rows.filter), Lines{"none"});
}

TEST(QuickHelpInputModelFilter, SettingTheSameDocumentDoesNothing)
{
    Rows rows;
    int asked = 0;
    class Counting : public QuickHelpInputModelFilter
    {
    public:
        explicit Counting(int& asked)
            : QuickHelpInputModelFilter(doc(7), nullptr)
            , m_asked(asked)
        { }

    protected:
        bool filterAcceptsRow(int row, const QModelIndex& parent) const override
        {
            ++m_asked;
            return QuickHelpInputModelFilter::filterAcceptsRow(row, parent);
        }

    private:
        int& m_asked;
    };
    Counting filter(asked);
    filter.setSourceModel(&list(QuickHelpSection::View));
    EXPECT_EQ(filter.rowCount(), 2);
    asked = 0;
    filter.setDocId(doc(7));
    filter.rowCount();
    EXPECT_EQ(asked, 0);
    filter.setDocId(doc(8));
    filter.rowCount();
    EXPECT_EQ(asked, 3);
}

TEST(QuickHelpInputModelFilter, FollowsAttachingAndDestruction)
{
    Rows rows;
    auto late = std::make_unique<Binding>(7, "late");
    late->setAttached(true);
    EXPECT_EQ(texts(rows.filter), (Lines{"seven", "none", "late"}));
    rows.seven.setAttached(false);
    EXPECT_EQ(texts(rows.filter), (Lines{"none", "late"}));
    late.reset();
    EXPECT_EQ(texts(rows.filter), Lines{"none"});
    rows.seven.setDescription("changed");
    rows.seven.setAttached(true);
    EXPECT_EQ(texts(rows.filter), (Lines{"changed", "none"}));
}

TEST(QuickHelpInputModelFilter, ComparesAllSixtyFourBits)
{
    Rows rows;
    const unsigned long long big = (1ull << 32) + 7;
    Binding far(big, "far");
    Binding multiple(1ull << 32, "multiple"); // its low half is 0, yet it belongs to a document
    Binding largest(~0ull, "largest");
    for (AbstractQuickHelpInputEntry* const p_entry : {&far, &multiple, &largest}) {
        p_entry->setAttached(true);
    }
    EXPECT_EQ(texts(rows.filter), (Lines{"seven", "none"}));
    rows.filter.setDocId(doc(big));
    EXPECT_EQ(texts(rows.filter), (Lines{"none", "far"}));
    rows.filter.setDocId(doc(~0ull));
    EXPECT_EQ(texts(rows.filter), (Lines{"none", "largest"}));
}

TEST(QuickHelpInputModelFilter, ReadsTheRolesOfAnySource)
{
    QStandardItemModel source(3, 1);
    for (int row = 0; row < 3; ++row) {
        source.setData(source.index(row, 0), QString::number(row), Description);
        source.setData(source.index(row, 0), row != 1, Visible);
        source.setData(source.index(row, 0), row == 2 ? 7 : 0, DocId);
    }
    QuickHelpInputModelFilter filter(doc(7), nullptr);
    filter.setSourceModel(&source);
    EXPECT_EQ(texts(filter), (Lines{"0", "2"}));
    filter.setDocId(doc(8));
    EXPECT_EQ(texts(filter), Lines{"0"});
}

TEST(QuickHelpInputModelFilter, RowsBelowOthersAreJudgedByTheirOwnRoles)
{
    QStandardItemModel source(1, 1);
    const QModelIndex top = source.index(0, 0);
    source.setData(top, true, Visible);
    source.insertColumns(0, 1, top);
    source.insertRows(0, 2, top);
    source.setData(source.index(1, 0, top), true, Visible);
    source.setData(source.index(1, 0, top), "below", Description);
    QuickHelpInputModelFilter filter(doc(7), nullptr);
    filter.setSourceModel(&source);
    ASSERT_EQ(filter.rowCount(), 1);
    ASSERT_EQ(filter.rowCount(filter.index(0, 0)), 1);
    EXPECT_EQ(filter.index(0, 0, filter.index(0, 0)).data(Description), QVariant("below"));
}

TEST(QuickHelpInputModelFilter, SourceGoesFirst)
{
    Binding entry(7, "text");
    entry.setAttached(true);
    QuickHelpInputModelFilter filter(doc(7), nullptr);
    filter.setSourceModel(&list(QuickHelpSection::View));
    EXPECT_EQ(filter.rowCount(), 1);
    TestAccess::destroy<QuickHelpManager>();
    EXPECT_EQ(filter.rowCount(), 0);
}

} // namespace
