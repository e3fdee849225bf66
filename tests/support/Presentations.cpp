#include "support/Presentations.h"

#include "support/Kept.h"

#include "support/Fakes.h"

namespace support {

FakePresentation::FakePresentation(const std::string& label, const std::string& controller)
    : m_label(label)
    , m_controller(controller)
{ }

FakePresentation::~FakePresentation()
{
    step("destroyed", on_destroyed);
}

void FakePresentation::step(const std::string& entry, const Step& action)
{
    journal().add(m_label + "." + entry);
    if (action) {
        action(*this);
    }
}

void FakePresentation::update_presentation()
{
    step("update", on_update);
}

void FakePresentation::init_presentation()
{
    step("init", on_init);
}

void FakePresentation::build_presentation()
{
    step("build", on_build);
}

FakePresentationFactory::FakePresentationFactory(const std::string& name, const std::string& controller)
    : AbstractPresentationFactory(name, false)
    , m_name(name)
    , m_controller(controller)
{ }

boost::shared_ptr<gui::AbstractPresentation> FakePresentationFactory::create_product()
{
    return boost::shared_ptr<gui::AbstractPresentation>(create_unmanaged_product());
}

gui::AbstractPresentation* FakePresentationFactory::create_unmanaged_product()
{
    journal().add(m_name + ".create");
    if (gives_nothing) {
        return nullptr;
    }
    FakePresentation* const p_presentation = new FakePresentation(m_name, m_controller);
    p_presentation->on_init = on_init;
    p_presentation->on_build = on_build;
    p_presentation->on_update = on_update;
    p_presentation->on_destroyed = on_destroyed;
    return p_presentation;
}

FakePresentationFactory& register_presentation(const std::string& name, const std::string& controller)
{
    return kept(new FakePresentationFactory(name, controller));
}

} // namespace support
