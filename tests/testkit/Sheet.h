#pragma once

#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/housekeeping/AbstractModel.h>

#include <string>
#include <vector>

namespace sheet {

namespace housekeeping = tarqa::housekeeping;

/// Something that lies on a sheet. Whoever points at it goes by its number, which it keeps for life.
struct Mark
{
    unsigned int number = 0;
    std::string text;
    int row = 0;
};

/// A sheet of numbers with a heading and marks, to try commands on.
class Sheet : public housekeeping::AbstractModel
{
public:
    bool empty() const override { return cells.empty(); }
    unsigned long long size() const override { return cells.size(); }
    void clear() override;
    const std::string& document_type() const override;
    void setupDatabase(const QString&) override { }
    void mergeDatabase(const QString&) override { }
    QString getDatabasePath() override { return QString(); }

    double& cell(int column, int row) { return cells[index(column, row)]; }
    double cell(int column, int row) const { return cells[index(column, row)]; }
    /// A number that no mark has had so far.
    unsigned int fresh_number() { return ++m_last_number; }
    void add_mark(const std::string& text, int row) { marks.push_back({fresh_number(), text, row}); }

    int columns = 0;
    int rows = 0;
    std::vector<double> cells; ///< row by row
    std::vector<Mark> marks;
    std::string heading;

private:
    std::size_t index(int column, int row) const
    {
        return static_cast<std::size_t>(row) * static_cast<std::size_t>(columns)
            + static_cast<std::size_t>(column);
    }

    unsigned int m_last_number = 0; // no part of what is saved: numbers need not be without gaps
};

/// The document around a sheet.
class SheetDocument : public housekeeping::AbstractDocument
{
public:
    SheetDocument();

    Sheet& sheet() { return static_cast<Sheet&>(model()); }
    const Sheet& sheet() const { return static_cast<Sheet&>(model()); }
    bool is_modified() const { return m_modified; }

    void buildModel() override { AbstractDocument::buildModel(); }
    void set_busy(bool busy) override { m_busy = busy; }
    bool is_busy() const override { return m_busy; }
    bool request_close(bool, bool) override { return !m_busy; }
    void set_modified(bool modified) override { m_modified = modified; }
    void document_created() override { }
    void title_changed() override { }

private:
    bool m_busy = false;
    bool m_modified = false;
};

/// A new document of the document manager with a sheet of 4 columns, 3 rows and three marks. Registers the
/// documents' factory when it is the first.
SheetDocument& new_sheet();
/// The same, of any size.
SheetDocument& new_sheet(int columns, int rows);

/// All that is saved of a sheet, a line for each cell and mark; two sheets differ if and only if these texts
/// do.
std::string text_of(const housekeeping::AbstractDocument& document);

} // namespace sheet
