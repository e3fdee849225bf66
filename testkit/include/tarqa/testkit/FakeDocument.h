#pragma once

#include <tarqa/housekeeping/AbstractDocument.h>
#include <tarqa/testkit/FakeModel.h>
#include <tarqa/testkit/tq_hk_testkit_export.h>

#include <atomic>
#include <string>

namespace tarqa::housekeeping::testkit {

/**
 * A document of named values, for tests of controllers, views and commands that need some document:
 *
 *     FakeDocument& document = FakeDocument::create();
 *     document.values()["angle"] = "90";
 *
 * The document manager owns it. It says what the framework told it: whether it is busy, modified, and how
 * often its title changed. Main thread, except what AbstractDocument allows elsewhere.
 */
class TQ_HK_TESTKIT_EXPORT FakeDocument : public AbstractDocument
{
public:
    FakeDocument();
    ~FakeDocument() override;

    /// Registers a factory of these, named "fake document", which stays for ever; only the first call does.
    /// It becomes the default product, so that the document manager makes these from now on.
    static void register_factory();
    /// A new, current document of the document manager; registers the factory. The controllers are to be
    /// there already, as before a host's first document: see FakeController::make_controllers().
    /// @throws std::bad_cast if another factory has become the default since
    static FakeDocument& create();
    /// @throws std::bad_cast if it is another kind of document
    static FakeDocument& of(AbstractDocument& document);

    /// The values, those of the model, to look at and to change.
    FakeModel::Values& values();
    /// One line for each value, "name=value", in the order of names: a digest for RoundTripProof.
    std::string text() const;

    /// What set_modified() was told last; false before.
    bool is_modified() const { return m_modified; }
    /// How often title_changed() was called.
    int title_changes() const { return m_title_changes; }
    /// What request_close() answers; true unless set.
    void agrees_to_close(bool agrees) { m_agrees_to_close = agrees; }

    void buildModel() override;
    void set_busy(bool busy) override;
    bool is_busy() const override;
    bool request_close(bool first, bool second) override;
    void set_modified(bool modified) override;
    void document_created() override;
    void title_changed() override;

private:
    std::atomic<bool> m_busy{false};
    std::atomic<bool> m_modified{false};
    bool m_agrees_to_close = true;
    int m_title_changes = 0;
};

} // namespace tarqa::housekeeping::testkit
