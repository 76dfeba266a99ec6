#pragma once

#include <zep/converters/rs274d/Program.h>
#include <zep/framework/Exception.h>

#include <QString>

#include <cmath>
#include <numbers>
#include <string>
#include <vector>

namespace ZEP {

/// Counts the moves of a tool path.
class PathCounter : public TRS274DSink {
public:
    int Rapids = 0, Feeds = 0, Drills = 0, Arcs = 0, Curves = 0, Tools = 0;

    void Rapid(const TRS274DPoint&, const TRS274DPoint&, qint64) override { ++Rapids; }
    void Feed(const TRS274DPoint&, const TRS274DPoint&, qint64) override { ++Feeds; }
    void Drill(const TRS274DPoint&, qint64) override { ++Drills; }
    void Arc(const TRS274DArc&, qint64) override { ++Arcs; }
    void Curve(std::span<const TRS274DPoint>, qint64) override { ++Curves; }
    void NextTool() override { ++Tools; }
    void Dump(std::string_view) override {}
};

/// Writes the tool path down: "rapid 0 0 0 > 1 2 3 @1", with the line of the program at the end.
class PathRecorder : public TRS274DSink {
public:
    std::vector<std::string> Moves;
    std::vector<std::string> Trace;
    std::vector<TRS274DArc> Arcs;
    std::vector<std::vector<TRS274DPoint>> Curves;

    void Rapid(const TRS274DPoint& from, const TRS274DPoint& to, qint64 line) override {
        Move("rapid " + Text(from) + " > " + Text(to), line);
    }
    void Feed(const TRS274DPoint& from, const TRS274DPoint& to, qint64 line) override {
        Move("feed " + Text(from) + " > " + Text(to), line);
    }
    void Drill(const TRS274DPoint& at, qint64 line) override { Move("drill " + Text(at), line); }
    void Arc(const TRS274DArc& arc, qint64 line) override {
        Arcs.push_back(arc);
        constexpr const char* planes[] = {"XY", "XZ", "YZ"};
        Move(std::string("arc ") + planes[arc.Plane] + " " + Text(arc.Center) + " r" +
                 Number(arc.Radius) + " " + Number(arc.StartAngle) + ".." + Number(arc.EndAngle),
             line);
    }
    void Curve(std::span<const TRS274DPoint> points, qint64 line) override {
        Curves.emplace_back(points.begin(), points.end());
        Move("curve " + Text(points.front()) + " > " + Text(points.back()), line);
    }
    void NextTool() override { Moves.emplace_back("tool"); }
    void Dump(std::string_view text) override { Trace.emplace_back(text); }

private:
    static std::string Number(double value) {
        const double rounded = std::round(value * 1e4) / 1e4;
        return QString::number(rounded == 0 ? 0.0 : rounded, 'g', 12).toStdString();
    }
    static std::string Text(const TRS274DPoint& point) {
        return Number(point[0]) + " " + Number(point[1]) + " " + Number(point[2]);
    }
    void Move(const std::string& text, qint64 line) {
        Moves.push_back(text + " @" + std::to_string(line));
    }
};

/// What became of a program.
template <class Sink>
struct PathReading : Sink {
    TRS274DReport Report;
    std::string Error;

    PathReading(std::string_view text, const TRS274DOptions& options) {
        try {
            ReadRS274D(text, options, *this, Report);
        } catch (const Exception& error) {
            Error = error.what();
        }
    }
    /// "blocks with variables 2@5": kind, how often, first line.
    [[nodiscard]] std::vector<std::string> Passed() const {
        std::vector<std::string> result;
        for (const auto& entry : Report.Entries())
            result.push_back(entry.Kind.toStdString() + " " + std::to_string(entry.Count) + "@" +
                             std::to_string(entry.FirstLine));
        return result;
    }
};
using PathResult = PathReading<PathRecorder>;
using PathCounts = PathReading<PathCounter>;

/// A point of an arc at an angle in degrees.
inline TRS274DPoint PointOf(const TRS274DArc& arc, double degrees) {
    const double angle = degrees * std::numbers::pi / 180;
    const TRS274DAxes axes = AxesOf(arc.Plane);
    TRS274DPoint point = arc.Center;
    point[axes.First] += arc.Radius * std::cos(angle);
    point[axes.Second] += arc.Radius * std::sin(angle);
    return point;
}

} // namespace ZEP
