#include <zep/view/Context.h>

#include "tests/Cases.h"
#include "tests/Words.h"
#include "tests/view/FakeBinding.h"
#include <zep/framework/Property.h>
#include <zep/gl/Names.h>

#include <GL/glext.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>

namespace {

/// What the driver of these tests answers.
std::map<GLenum, const char*> DriverStrings;
std::map<GLenum, int> DriverValues;
std::vector<GLenum> Enabled;
GLenum DepthFunction = 0;

} // namespace

extern "C" {

const GLubyte* GLAPIENTRY glGetString(GLenum name) {
    const auto found = DriverStrings.find(name);
    return found == DriverStrings.end() ? nullptr : reinterpret_cast<const GLubyte*>(found->second);
}

void GLAPIENTRY glGetIntegerv(GLenum name, GLint* value) {
    const auto found = DriverValues.find(name);
    if (found != DriverValues.end()) *value = found->second;
}

void GLAPIENTRY glEnable(GLenum what) {
    Enabled.push_back(what);
}

void GLAPIENTRY glDepthFunc(GLenum function) {
    DepthFunction = function;
}
}

namespace ZEP {
namespace {

void EquationOfDriver(GLenum /*mode*/) {}

class ContextTest : public testing::Test {
protected:
    ContextTest() { System.Formats = {FakeFormat(32, 24, pfDoubleBuffer)}; }
    ~ContextTest() override {
        DriverStrings.clear();
        DriverValues.clear();
        Enabled.clear();
    }

    std::unique_ptr<TZEPContext> MakeContext() {
        return std::make_unique<TZEPContext>(std::make_unique<FakeBinding>(System));
    }

    FakeBinding::System System;
};

TEST_F(ContextTest, PublishesItsReportsInOrder) {
    QStringList names;
    const auto context = MakeContext();
    for (const QMetaProperty& property : PublishedProperties(*context->MetaObject())) {
        names.append(QString::fromLatin1(property.name()));
        const TZEPContext& gadget = *context;
        EXPECT_EQ(property.readOnGadget(&gadget), DeclaredDefault(*context->MetaObject(), property))
            << property.name();
    }
    EXPECT_EQ(names.join(QLatin1Char(' ')),
              QStringLiteral("Acceleration Vendor Renderer Version Extentions MaxLights "
                             "MaxViewportSize MaxClipPlanes MaxTextureSize MaxTextureUnits "
                             "UseSoftwareRenderer SafeMode"));
}

TEST_F(ContextTest, StringsIgnoreAssignmentLimitsAreStored) {
    const auto context = MakeContext();
    for (const QMetaProperty& property : PublishedProperties(*context->MetaObject())) {
        const bool text = property.metaType() == QMetaType::fromType<QString>();
        const bool limit = property.metaType() == QMetaType::fromType<int>();
        if (!text && !limit) continue;
        EXPECT_TRUE(property.writeOnGadget(context.get(), text ? QVariant("x") : QVariant(5)));
        EXPECT_EQ(property.readOnGadget(context.get()), text ? QVariant(QString()) : QVariant(5))
            << property.name();
    }
}

TEST_F(ContextTest, ReadsTheDriver) {
    DriverStrings = {{GL_VENDOR, "Maker"},
                     {GL_RENDERER, "Card 7"},
                     {GL_VERSION, "1.4 beta"},
                     {GL_EXTENSIONS, "GL_EXT_a GL_ARB_multitexture"}};
    DriverValues = {
        {GL_MAX_LIGHTS, 8},          {GL_MAX_VIEWPORT_DIMS, 4096},  {GL_MAX_CLIP_PLANES, 6},
        {GL_MAX_TEXTURE_SIZE, 2048}, {GL_MAX_TEXTURE_UNITS_ARB, 4}, {GL_STENCIL_BITS, 8}};
    const auto context = MakeContext();
    context->CreateContext(1);
    EXPECT_EQ(context->Vendor(), QStringLiteral("MAKER "));
    EXPECT_EQ(context->Renderer(), QStringLiteral("CARD 7 "));
    EXPECT_EQ(context->Version(), QStringLiteral("1.4 BETA "));
    EXPECT_EQ(context->Extentions(), QStringLiteral("GL_EXT_A GL_ARB_MULTITEXTURE "));
    EXPECT_EQ(context->MaxLights(), 8);
    EXPECT_EQ(context->MaxViewportSize(), 4096);
    EXPECT_EQ(context->MaxClipPlanes(), 6);
    EXPECT_EQ(context->MaxTextureSize(), 2048);
    EXPECT_EQ(context->MaxTextureUnits(), 4);
    EXPECT_EQ(context->StencilBits(), 8);
    EXPECT_THAT(Enabled, testing::Contains(GL_NORMALIZE));
    EXPECT_EQ(DepthFunction, static_cast<GLenum>(GL_LEQUAL));
}

TEST_F(ContextTest, FetchesTheBlendEntryPoints) {
    System.EntryPoints = {{"glBlendEquationEXT", reinterpret_cast<TEntryPoint>(&EquationOfDriver)}};
    const auto context = MakeContext();
    context->CreateContext(1);
    EXPECT_EQ(BlendEquationEXT, &EquationOfDriver);
    EXPECT_EQ(BlendColorEXT, nullptr);
    System.GrantsContext = false;
    MakeContext()->CreateContext(2);
    EXPECT_EQ(BlendEquationEXT, &EquationOfDriver); // a panel that fails takes nothing from others
}

TEST_F(ContextTest, OneTextureUnitWithoutTheExtensionAndEmptyStringsWithoutAnswer) {
    DriverValues = {{GL_MAX_TEXTURE_UNITS_ARB, 4}};
    const auto context = MakeContext();
    context->CreateContext(1);
    EXPECT_EQ(context->MaxTextureUnits(), 1);
    EXPECT_EQ(context->Extentions(), QString());
    EXPECT_EQ(context->MaxLights(), 0);
}

TEST_F(ContextTest, ExtensionsAreFoundByTheBlankAfterTheirFirstOccurrence) {
    DriverStrings = {{GL_EXTENSIONS, "GL_EXT_blend_color_more GL_EXT_blend_color XGL_FOO GL_LAST"}};
    const auto context = MakeContext();
    context->CreateContext(1);
    const std::vector<std::pair<const char*, bool>> cases = {
        {"GL_EXT_blend_color_more", true},
        {"GL_EXT_blend_color", false}, // first the start of a longer one
        {"GL_FOO", true},              // the end of a longer one
        {"gl_last", true},
        {"GL_LAS", false},
        {"GL_NONE", false},
        {"GL_LAST ", false},
    };
    for (const auto& [name, expected] : cases)
        EXPECT_EQ(context->CheckExtention(QString::fromLatin1(name)), expected) << name;
}

/// Contexts of one system under the commands of `tests/data/cases/view/contexts.txt`: each answers
/// whether it is so, with what the system was asked, or how many contexts there are.
class TContexts {
public:
    TContexts() { m_system.Formats = {FakeFormat(32, 24, pfDoubleBuffer)}; }

    std::string Do(const std::string& line) {
        const TWords words(line);
        const std::string verb = words.Verb();
        const bool on = words.At(1) != "off";
        std::unique_ptr<TZEPContext>& context = m_contexts[words.At(1)];
        m_system.Calls.clear();
        if (verb == "paletted") m_system.Formats = {FakeFormat(32, 24, pfNeedPalette)};
        if (verb == "grants-context") m_system.GrantsContext = on;
        if (verb == "grants-current") m_system.GrantsCurrent = on;
        if (verb == "host-current") m_system.Current = static_cast<TContextHandle>(words.Int(1));
        if (verb == "is-current") return context->IsCurrent() ? "yes" : "no";
        if (verb == "current") {
            const std::string answer = context->MakeCurrent() ? "yes" : "no";
            return answer + Called("current");
        }
        if (verb == "create" && !context)
            context = std::make_unique<TZEPContext>(std::make_unique<FakeBinding>(m_system));
        if (verb == "create") context->CreateContext(1);
        if (verb == "destroy") context->DestroyContext();
        if (verb == "free") context.reset();
        if (verb != "create" && verb != "destroy" && verb != "free") return {};
        return std::to_string(m_system.Alive.size()) + " alive" + Called("delete");
    }

private:
    [[nodiscard]] std::string Called(const char* name) const {
        std::string text;
        for (const std::string& call : m_system.Calls)
            if (call.starts_with(name)) text += ", " + call;
        return text;
    }

    FakeBinding::System m_system;
    std::map<std::string, std::unique_ptr<TZEPContext>> m_contexts;
};

TEST_F(ContextTest, ContextsAreMadeAndMadeCurrentAsItIsWrittenDown) {
    ExpectCases("view/contexts.txt", [](const TCase& c) {
        TContexts contexts;
        return EachLine(c, [&](const std::string& line) { return contexts.Do(line); });
    });
}

} // namespace
} // namespace ZEP
