#include <tarqa/testkit/FakeDocument.h>

#include <tarqa/housekeeping/AbstractDocumentFactory.h>
#include <tarqa/housekeeping/DocumentManager.h>

#include <boost/make_shared.hpp>

namespace tarqa::housekeeping::testkit {

namespace {

class FakeDocumentFactory : public AbstractDocumentFactory
{
public:
    FakeDocumentFactory()
        : AbstractDocumentFactory("fake document", true)
    { }
    boost::shared_ptr<AbstractDocument> create_product() override
    {
        return boost::make_shared<FakeDocument>();
    }
    AbstractDocument* create_unmanaged_product() override { return new FakeDocument; }
};

} // namespace

FakeDocument::FakeDocument()
{
    m_model = boost::make_shared<FakeModel>();
    m_model->set_parent_document(*this);
}

FakeDocument::~FakeDocument() = default;

void FakeDocument::register_factory()
{
    // Leaked: the registry refers to it until the process ends.
    static const FakeDocumentFactory* const s_p_factory = new FakeDocumentFactory;
    static_cast<void>(s_p_factory);
}

FakeDocument& FakeDocument::create()
{
    register_factory();
    return of(DocumentManager::instance().create_document());
}

FakeDocument& FakeDocument::of(AbstractDocument& document)
{
    return dynamic_cast<FakeDocument&>(document);
}

FakeModel::Values& FakeDocument::values()
{
    return static_cast<FakeModel&>(*m_model).values();
}

std::string FakeDocument::text() const
{
    std::string text;
    for (const auto& value : static_cast<const FakeModel&>(*m_model).values()) {
        text += value.first + '=' + value.second + '\n';
    }
    return text;
}

void FakeDocument::buildModel()
{
    AbstractDocument::buildModel();
}

void FakeDocument::set_busy(bool busy)
{
    m_busy = busy;
}

bool FakeDocument::is_busy() const
{
    return m_busy;
}

bool FakeDocument::request_close(bool, bool)
{
    return m_agrees_to_close;
}

void FakeDocument::set_modified(bool modified)
{
    m_modified = modified;
}

void FakeDocument::document_created() { }

void FakeDocument::title_changed()
{
    ++m_title_changes;
}

} // namespace tarqa::housekeeping::testkit
