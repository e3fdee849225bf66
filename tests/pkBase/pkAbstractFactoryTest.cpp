#include <pkBase/pkAbstractFactory.h>

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>

namespace {

class Factory : public pkBase::pkAbstractFactory
{
public:
    explicit Factory(int value, bool* p_deleted = nullptr)
        : m_value(value)
        , m_p_deleted(p_deleted)
    { }
    Factory(const Factory& other)
        : pkAbstractFactory(other)
        , m_value(other.m_value)
    { }
    Factory& operator=(const Factory& other) = default;
    ~Factory() override
    {
        if (m_p_deleted) {
            *m_p_deleted = true;
        }
    }
    int value() const { return m_value; }

private:
    int m_value;
    bool* m_p_deleted = nullptr; // not owned
};

} // namespace

TEST(pkAbstractFactory, IsABaseOnly)
{
    EXPECT_FALSE(std::is_default_constructible<pkBase::pkAbstractFactory>::value);
    EXPECT_TRUE(std::has_virtual_destructor<pkBase::pkAbstractFactory>::value);
    EXPECT_TRUE(std::is_copy_constructible<pkBase::pkAbstractFactory>::value);
    EXPECT_TRUE(std::is_copy_assignable<pkBase::pkAbstractFactory>::value);
}

TEST(pkAbstractFactory, IsCopiedWithItsDerivedClass)
{
    const Factory original(3);
    Factory copy(original);
    EXPECT_EQ(copy.value(), 3);
    copy = Factory(4);
    EXPECT_EQ(copy.value(), 4);
    EXPECT_EQ(original.value(), 3);
}

TEST(pkAbstractFactory, IsDeletedThroughTheBase)
{
    bool deleted = false;
    std::unique_ptr<pkBase::pkAbstractFactory> factory = std::make_unique<Factory>(1, &deleted);
    EXPECT_FALSE(deleted);
    factory.reset();
    EXPECT_TRUE(deleted);
}
