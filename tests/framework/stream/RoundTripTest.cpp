#include "tests/framework/stream/Subject.h"

#include <gmock/gmock.h>

namespace ZEP {
namespace {

class RoundTrip : public testing::TestWithParam<std::string> {
protected:
    TSubject m_subject{QString::fromStdString(GetParam())};
};

TEST_P(RoundTrip, StreamsKnowEveryPublishedProperty) {
    ForEachField(TInstance(m_subject.Component),
                 [](const std::string& path, const TField& field, const TInstance&) {
                     EXPECT_NE(field.Kind(), TFieldKind::Unknown) << path;
                 });
}

TEST_P(RoundTrip, EveryPropertyComesBackInBothForms) {
    AlterAll(m_subject);
    for (const TStreamForm form : {TStreamForm::Binary, TStreamForm::Text}) {
        const std::string saved = SavedAs(form, *m_subject.Component);
        TSubject loaded(QString::fromStdString(GetParam()));
        EXPECT_THAT(LoadInto(*loaded.Component, saved), testing::IsEmpty());
        EXPECT_EQ(ValuesOf(*loaded.Component), ValuesOf(*m_subject.Component));
        EXPECT_TRUE(SavedAs(form, *loaded.Component) == saved);
    }
}

// Streams leave out zeros, so that what reads them begins with zeros where a new one has others.
TEST_P(RoundTrip, ZerosComeBack) {
    AlterAll(m_subject); // collections have items
    ForEachField(TInstance(m_subject.Component),
                 [](const std::string&, const TField& field, const TInstance& instance) {
                     if (field.Kind() == TFieldKind::Single || field.Kind() == TFieldKind::Double)
                         field.SetFloat(instance, 0);
                 });
    const std::string saved = SavedAs(TStreamForm::Binary, *m_subject.Component);
    TSubject loaded(QString::fromStdString(GetParam()));
    EXPECT_THAT(LoadInto(*loaded.Component, saved), testing::IsEmpty());
    EXPECT_EQ(ValuesOf(*loaded.Component), ValuesOf(*m_subject.Component));
}

TEST_P(RoundTrip, ANewOneComesBackAsItWas) {
    const std::string saved = SavedAs(TStreamForm::Text, *m_subject.Component);
    TSubject loaded(QString::fromStdString(GetParam()));
    EXPECT_THAT(LoadInto(*loaded.Component, saved), testing::IsEmpty());
    EXPECT_EQ(ValuesOf(*loaded.Component), ValuesOf(*m_subject.Component));
    EXPECT_EQ(SavedAs(TStreamForm::Text, *loaded.Component), saved);
}

TEST_P(RoundTrip, ANewOneHoldsTheDeclaredDefaultsAndComesBackToThem) {
    for (const bool altered : {false, true}) {
        if (altered) AlterAll(m_subject);
        ForEachField(
            TInstance(m_subject.Component),
            [altered](const std::string& path, const TField& field, const TInstance& instance) {
                if (!field.IsStored() || !field.Default()) return;
                if (altered) {
                    EXPECT_TRUE(field.SetOrdinal(instance, *field.Default())) << path;
                }
                EXPECT_EQ(field.Ordinal(instance), *field.Default()) << path;
            });
    }
}

INSTANTIATE_TEST_SUITE_P(Class, RoundTrip, testing::ValuesIn(RegisteredClasses()),
                         [](const auto& row) { return row.param; });

} // namespace
} // namespace ZEP
