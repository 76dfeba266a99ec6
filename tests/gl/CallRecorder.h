#pragma once

#include <experimental/source_location>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

namespace ZEP {

/// The OpenGL and GLU calls made while it lives, one text each: `glPushMatrix()`,
/// `glMaterialfv(GL_FRONT, GL_AMBIENT, 0.25 0.25 0.25 0)`.
///
/// The program defines the functions of GlFunctions.cpp itself, so that the libraries reach these,
/// which note the call and hand it on to the real one. Numbers have six significant digits, and
/// what lies below 1e-9 is 0. What GLU calls in turn is left out, since it is the same for every
/// caller; of queries, of tessellators and of entry points fetched from the driver nothing is
/// noted. Of two that live at once the inner one records.
class GlCalls {
public:
    GlCalls();
    ~GlCalls();
    GlCalls(const GlCalls&) = delete;
    GlCalls& operator=(const GlCalls&) = delete;

    const std::vector<std::string>& List() const { return m_calls; }
    /// Only the calls of the named functions; a name that ends in `*` stands for all that start so.
    std::vector<std::string> Of(std::initializer_list<std::string_view> names) const;
    /// How often the named function was called.
    std::size_t Count(std::string_view name) const { return Of({name}).size(); }
    void Clear() { m_calls.clear(); }

    /// Adds a line to the innermost record, for a test's own stand-in of a function.
    static void Note(std::string line);
    /// Somebody wants to know what is called.
    static bool IsRecording();

private:
    std::vector<std::string> m_calls;
    GlCalls* m_outer;
};

/// Fails unless exactly these calls were made, in this order; nothing expected fails too, so that a
/// test cannot pass because nothing was recorded.
void ExpectCalls(
    const std::vector<std::string>& calls, const std::vector<std::string>& expected,
    std::experimental::source_location where = std::experimental::source_location::current());
void ExpectCalls(
    const GlCalls& calls, const std::vector<std::string>& expected,
    std::experimental::source_location where = std::experimental::source_location::current());

/// Fails when a call was made, and when the recorder does not work.
void ExpectNoCalls(const GlCalls& calls, std::experimental::source_location where =
                                             std::experimental::source_location::current());

} // namespace ZEP
