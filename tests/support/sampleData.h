#pragma once

#include <QString>

/// How large a sample shop is to be.
struct SampleSize {
    int customers = 2000;
    int products = 400;
    int lines = 20'000;
    int salespeople = 12;
    int years = 5;
};

/// Makes a database file filled with an invented shop: the same rows for the same size, few customers with
/// much of the turnover and many with little, every total and every stock right. Prices are multiples of
/// 0.25. `path` must not exist. Throws RuntimeError.
void makeSample(const QString& path, const SampleSize& size);
