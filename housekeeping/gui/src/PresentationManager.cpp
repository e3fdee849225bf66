#include <tarqa/housekeeping/gui/PresentationManager.h>

#include <tarqa/housekeeping/gui/AbstractPresentation.h>
#include <tarqa/housekeeping/gui/AbstractPresentationFactory.h>

#include "Assertion.h"

#include <utility>

namespace tarqa::housekeeping::gui {

namespace {

const char* const s_source = "housekeeping/gui/src/PresentationManager";

} // namespace

PresentationManager::PresentationManager() = default;

PresentationManager::~PresentationManager() = default;

pkBase::pkSingleton<PresentationManager>& PresentationManager::get_instance()
{
    static pkBase::pkSingleton<PresentationManager> s_holder(
        pkBase::pkDestructionPhase(5), &PresentationManager::destroy_instance);
    return s_holder;
}

PresentationManager& PresentationManager::instance()
{
    return get_instance().get();
}

const PresentationManager& PresentationManager::const_instance()
{
    return instance();
}

void PresentationManager::destroy_instance()
{
    get_instance().destroy();
}

void PresentationManager::init()
{
    create_all();
    for (const std::string& name : AbstractPresentationFactory::products()) {
        const boost::shared_ptr<AbstractPresentation> sp_presentation = presentation(name);
        if (HK_ASSERT(sp_presentation, "!utilities::null_pointer( sp_presentation )")) {
            sp_presentation->init();
        }
    }
    for (const std::string& name : AbstractPresentationFactory::products()) {
        const boost::shared_ptr<AbstractPresentation> sp_presentation = presentation(name);
        if (HK_ASSERT(sp_presentation, "!utilities::null_pointer( sp_presentation )")) {
            sp_presentation->build();
        }
    }
}

void PresentationManager::create_all()
{
    for (const std::string& name : AbstractPresentationFactory::products()) {
        const boost::shared_ptr<AbstractPresentation> sp_presentation
            = AbstractPresentationFactory::create(name);
        HK_ASSERT(sp_presentation, "!utilities::null_pointer( sp_presentation )");
        const bool inserted = m_presentations.insert(std::make_pair(name, sp_presentation)).second;
        HK_ASSERT(inserted, "inserted");
    }
}

boost::shared_ptr<AbstractPresentation> PresentationManager::presentation(std::string name)
{
    const auto iter = m_presentations.find(name);
    return iter == m_presentations.end() ? boost::shared_ptr<AbstractPresentation>() : iter->second;
}

} // namespace tarqa::housekeeping::gui
