#pragma once

#include <tarqa/housekeeping/gui/AbstractPresentation.h>
#include <tarqa/housekeeping/gui/AbstractPresentationFactory.h>

#include <functional>
#include <string>

namespace support {

namespace gui = tarqa::housekeeping::gui;

/// A presentation that journals as its name: "alpha.init", "alpha.build", "alpha.update", "alpha.destroyed".
class FakePresentation : public gui::AbstractPresentation
{
public:
    typedef std::function<void(FakePresentation&)> Step;

    /// @param label its name in the journal @param controller the name of the controller that it shows
    FakePresentation(const std::string& label, const std::string& controller);
    FakePresentation(const FakePresentation&) = default;
    FakePresentation& operator=(const FakePresentation&) = default;
    ~FakePresentation() override;

    using AbstractPresentation::controller;
    using AbstractPresentation::receive_updates;
    using Updateable::register_controller;

    // Called after the entry was made.
    Step on_init;
    Step on_build;
    Step on_update;
    Step on_destroyed;

protected:
    void update_presentation() override;
    void init_presentation() override;
    void build_presentation() override;
    std::string controller_name() const override { return m_controller; }

private:
    void step(const std::string& entry, const Step& action);

    std::string m_label;
    std::string m_controller;
};

/// Makes FakePresentations that are labelled like the product. Registered for ever by
/// register_presentation().
class FakePresentationFactory : public gui::AbstractPresentationFactory
{
public:
    FakePresentationFactory(const std::string& name, const std::string& controller);
    boost::shared_ptr<gui::AbstractPresentation> create_product() override;
    gui::AbstractPresentation* create_unmanaged_product() override;

    bool gives_nothing = false;
    // Handed to each presentation.
    FakePresentation::Step on_init;
    FakePresentation::Step on_build;
    FakePresentation::Step on_update;
    FakePresentation::Step on_destroyed;

private:
    std::string m_name;
    std::string m_controller;
};

FakePresentationFactory& register_presentation(const std::string& name, const std::string& controller);

} // namespace support
