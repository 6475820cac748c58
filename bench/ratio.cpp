// SPDX-License-Identifier: MIT
#include "bench/ratio.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdlib>
#include <cstring>
#include <iostream>
#include <nlohmann/json.hpp>

namespace bench {

namespace {

constexpr int Runs = 5;
constexpr double ShortestStretch = 0.05; // seconds

struct Figures {
    std::vector<double> Product;
    std::vector<double> Floor;
    std::vector<double> Tenth;
    std::vector<double> FloorTenth;
};

void Take(const Run& run, std::vector<double>& figures) {
    if (run)
        figures.push_back(run());
}

void TakeTurn(const Sides& sides, Figures& figures) {
    Take(sides.Product, figures.Product);
    Take(sides.Floor, figures.Floor);
    Take(sides.Tenth, figures.Tenth);
    Take(sides.FloorTenth, figures.FloorTenth);
}

Figures Measure(const Sides& sides) {
    Figures warmUp;
    TakeTurn(sides, warmUp);
    Figures figures;
    for (int i = 0; i < Runs; ++i)
        TakeTurn(sides, figures);
    return figures;
}

double FigureOf(Figure kind, double product, double floor) {
    switch (kind) {
    case Figure::Ratio:
        return product / floor;
    case Figure::Difference:
        return product - floor;
    default:
        return product;
    }
}

const char* NameOf(Figure kind) {
    switch (kind) {
    case Figure::Ratio:
        return "ratio";
    case Figure::Difference:
        return "difference";
    default:
        return "product";
    }
}

void Report(const Row& row, const Sides& sides, const Figures& figures) {
    const double product = Median(figures.Product);
    const double floor = figures.Floor.empty() ? 0 : Median(figures.Floor);
    nlohmann::ordered_json line = {{"work", row.Work}, {"floor", row.Floor}, {"unit", row.Reach.Unit}};
    line["runs"] = Runs;
    line["product"] = product;
    line["product_all"] = figures.Product;
    if (!figures.Floor.empty()) {
        line["floor_took"] = floor;
        line["floor_all"] = figures.Floor;
    }
    line["of"] = NameOf(row.Reach.Of);
    line["figure"] = FigureOf(row.Reach.Of, product, floor);
    line["mark"] = row.Reach.Limit;
    line["below"] = row.Reach.Below;
    if (!figures.Tenth.empty())
        line["growth"] = product / Median(figures.Tenth);
    if (!figures.FloorTenth.empty())
        line["floor_growth"] = floor / Median(figures.FloorTenth);
    if (sides.Note)
        line["note"] = sides.Note();
    std::cout << line.dump() << std::endl;
}

} // namespace

void Fail(const std::string& why) {
    std::cerr << "bench: " << why << std::endl;
    std::exit(1);
}

void MustAgree(const char* what, std::int64_t product, std::int64_t floor) {
    if (product != floor)
        Fail(std::string(what) + ": the product has " + std::to_string(product) + ", the floor " +
             std::to_string(floor));
}

double Now() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

double Seconds(const std::function<void()>& work) {
    const double start = Now();
    work();
    return Now() - start;
}

double SecondsOfOne(const std::function<void()>& work) {
    for (std::int64_t calls = 1;; calls *= 4) {
        const double start = Now();
        for (std::int64_t i = 0; i < calls; ++i)
            work();
        const double taken = Now() - start;
        if (taken >= ShortestStretch)
            return taken / static_cast<double>(calls);
    }
}

double Median(std::vector<double> figures) {
    return Percentile(std::move(figures), 50);
}

double Percentile(std::vector<double> figures, double percent) {
    std::sort(figures.begin(), figures.end());
    const double rank = std::ceil(static_cast<double>(figures.size()) * percent / 100);
    return figures[static_cast<std::size_t>(std::max(rank, 1.0)) - 1];
}

int Main(int count, char** words, const std::vector<Row>& rows) {
    if (count < 2 || count > 3) {
        std::cerr << "usage: " << words[0] << " FOLDER [NAME]\n";
        return 2;
    }
    const char* name = count == 3 ? words[2] : "";
    for (const Row& row : rows) {
        if (std::strstr(row.Work, name) == nullptr && std::strstr(row.Floor, name) == nullptr)
            continue;
        std::cerr << row.Work << " / " << row.Floor << " ..." << std::endl;
        const Sides sides = row.Prepare(words[1]);
        Report(row, sides, Measure(sides));
    }
    return 0;
}

} // namespace bench
