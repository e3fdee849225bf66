#include "texts/Failures.h"
#include "texts/Texts.h"

#include "foundation/NamedFactoryFixture.h"
#include "support/EmptyRegistry.h"
#include "support/Fakes.h"

#include <tarqa/housekeeping/CommandId.h>
#include <tarqa/housekeeping/DocumentManager.h>
#include <tarqa/housekeeping/InvalidPath.h>

#include <algorithm>
#include <limits>
#include <sstream>

// What identifiers, exceptions and factories say.

namespace {

using namespace tarqa::housekeeping;
using texts::Row;
using texts::thrown_by;

typedef std::vector<Row> Rows;

template <class Id>
std::string largest_id()
{
    return Id::build(std::numeric_limits<unsigned long long>::max()).getString();
}

/// What an invalid path writes after the text of its base.
std::string line_of_the_path(const std::string& path)
{
    const InvalidPath invalid(5, "no such place", "tests", 7, path);
    std::ostringstream base;
    invalid.HousekeepingException::log_information(base);
    std::ostringstream all;
    invalid.log_information(all);
    return all.str().substr(base.str().size());
}

std::string cancelled_command()
{
    support::FakeCommand command(DocumentId::build(5), "Rotate");
    support::FakeProgress sink;
    command.setProgress(&sink);
    command.request_cancel();
    return thrown_by([&command] { command.progress(50); });
}

std::string missing_model()
{
    support::FakeDocument document;
    document.remove_model();
    return thrown_by([&document] { document.model(); });
}

// Factories

template <class F>
std::string second_of_a_name()
{
    const support::EmptyRegistry<F> registry;
    const ConcreteFactory<F> first("survey", false);
    return thrown_by([] { const ConcreteFactory<F> second("survey", false); });
}

template <class F>
std::string nothing_registered()
{
    const support::EmptyRegistry<F> registry;
    return thrown_by([] { F::create(); });
}

template <class F>
std::string unknown_name()
{
    const support::EmptyRegistry<F> registry;
    const ConcreteFactory<F> factory("survey", false);
    return thrown_by([] { F::create_unmanaged("terrain"); });
}

template <class F>
Rows rows_of(const std::string& factory)
{
    return {{factory + "SecondProductOfAName",
                "Two products with name 'survey' are attempting to register with abstract factory '" + factory
                    + "'. Please contact Velmor Stade with a bug-report.",
                second_of_a_name<F>},
        {factory + "WithoutProducts",
            "Abstract factory has no registered concrete factory classes. Please contact Velmor Stade with a "
            "bug-report.",
            nothing_registered<F>},
        {factory + "UnknownProduct",
            "Abstract factory '" + factory
                + "' does not have the required product name 'terrain' registered. Please contact Velmor "
                  "Stade "
                  "with a bug-report",
            unknown_name<F>}};
}

/// The names of the library's own products, in the order of letters.
template <class F>
std::string products()
{
    std::vector<std::string> names = F::products();
    std::sort(names.begin(), names.end());
    std::string all;
    for (const std::string& name : names) {
        all += name + '\n';
    }
    return all;
}

Rows all_rows()
{
    Rows rows = {
        {"LargestDocumentId", "18446744073709551615", largest_id<DocumentId>},
        {"LargestCommandId", "18446744073709551615", largest_id<CommandId>},
        {"FaultyPath", "Faulty path = \"C:/x\"\n", [] { return line_of_the_path("C:/x"); }},
        {"MissingDocument", "1014 Document does not exist",
            [] {
                return thrown_by([] { DocumentManager::instance().document_from_id(DocumentId::build(5)); });
            }},
        {"CancelledCommand", "1028 Command was cancelled by user!", cancelled_command},
        {"MissingModel", "7006 Attempt to get invalid model from document", missing_model},
        {"ControllersOfTheLibrary", "ProgressBarsController\nUndoRedoController\n",
            products<AbstractControllerFactory>},
        {"PresentationsOfTheLibrary", "UndoRedoPresentation\n",
            products<housekeeping::gui::AbstractPresentationFactory>},
    };
    for (const Rows& more : {rows_of<AbstractControllerFactory>("AbstractControllerFactory"),
             rows_of<AbstractDataInformationFactory>("AbstractDataInformationFactory"),
             rows_of<AbstractDocumentFactory>("AbstractDocumentFactory"),
             rows_of<AbstractModelFactory>("AbstractModelFactory"),
             rows_of<housekeeping::gui::AbstractPreferencesFactory>("AbstractPreferencesFactory"),
             rows_of<housekeeping::gui::AbstractPresentationFactory>("AbstractPresentationFactory"),
             rows_of<housekeeping::gui::HelpLauncherFactory>("HelpLauncherFactory")}) {
        rows.insert(rows.end(), more.begin(), more.end());
    }
    return rows;
}

} // namespace

INSTANTIATE_TEST_SUITE_P(Foundation, Texts, testing::ValuesIn(all_rows()), texts::name_of);
