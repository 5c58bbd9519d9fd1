#pragma once

#include <gtest/gtest.h>

#include <QString>

#include <sqlite3.h>

inline constexpr const char* kWrites = "BEGIN IMMEDIATE";                 // no action of ours can begin
inline constexpr const char* kReads = "BEGIN; SELECT * FROM clientTable"; // none can be committed
inline constexpr const char* kExcludes = "BEGIN EXCLUSIVE";               // nobody can read

/// Another program that holds the file while it lives.
class OtherProgram {
public:
    OtherProgram(const QString& path, const char* held) {
        sqlite3_open(path.toUtf8().constData(), &m_db);
        EXPECT_EQ(sqlite3_exec(m_db, held, nullptr, nullptr, nullptr), SQLITE_OK);
    }
    ~OtherProgram() { sqlite3_close(m_db); }
    OtherProgram(const OtherProgram&) = delete;
    OtherProgram& operator=(const OtherProgram&) = delete;

private:
    sqlite3* m_db = nullptr;
};
