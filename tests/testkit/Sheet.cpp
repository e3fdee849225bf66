#include "Sheet.h"

#include "support/Controllers.h"
#include "support/Kept.h"

#include <tarqa/housekeeping/AbstractDocumentFactory.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <boost/make_shared.hpp>

#include <iomanip>
#include <limits>
#include <sstream>

namespace sheet {

namespace {

class SheetFactory : public housekeeping::AbstractDocumentFactory
{
public:
    SheetFactory()
        : AbstractDocumentFactory("Sheet", true)
    { }
    boost::shared_ptr<housekeeping::AbstractDocument> create_product() override
    {
        return boost::make_shared<SheetDocument>();
    }
    housekeeping::AbstractDocument* create_unmanaged_product() override { return new SheetDocument; }
};

} // namespace

void Sheet::clear()
{
    columns = rows = 0;
    cells.clear();
    marks.clear();
    heading.clear();
}

const std::string& Sheet::document_type() const
{
    static const std::string s_type = "Sheet";
    return s_type;
}

SheetDocument::SheetDocument()
{
    m_model = boost::make_shared<Sheet>();
    m_model->set_parent_document(*this);
}

SheetDocument& new_sheet()
{
    return new_sheet(4, 3);
}

SheetDocument& new_sheet(int columns, int rows)
{
    if (housekeeping::AbstractDocumentFactory::products().empty()) {
        support::init_controllers();
        support::kept(new SheetFactory);
    }
    auto& document
        = dynamic_cast<SheetDocument&>(housekeeping::DocumentManager::instance().create_document());
    Sheet& sheet = document.sheet();
    sheet.columns = columns;
    sheet.rows = rows;
    for (int i = 0; i < columns * rows; ++i) {
        sheet.cells.push_back(i * 0.7 + 10); // no two are the same, and few are exact
    }
    sheet.heading = "Soundings";
    sheet.add_mark("buoy", 0);
    sheet.add_mark("wreck", 1);
    sheet.add_mark("shoal", 2);
    return document;
}

std::string text_of(const housekeeping::AbstractDocument& document)
{
    const Sheet& sheet = dynamic_cast<const SheetDocument&>(document).sheet();
    std::ostringstream text;
    text << std::setprecision(std::numeric_limits<double>::max_digits10);
    text << "heading: " << sheet.heading << "\nsize: " << sheet.columns << " x " << sheet.rows << ", "
         << sheet.cells.size() << " cells\n";
    for (std::size_t i = 0; i < sheet.cells.size(); ++i) {
        text << "cell " << i << ": " << sheet.cells[i] << '\n';
    }
    for (const Mark& mark : sheet.marks) {
        text << "mark " << mark.number << " in row " << mark.row << ": " << mark.text << '\n';
    }
    return text.str();
}

} // namespace sheet
