#pragma once

#include <QString>
#include <QStringList>

#include <utility>

/// An open descriptor; -1 is none.
class Descriptor {
public:
    explicit Descriptor(int number = -1)
        : m_number(number) {}
    Descriptor(Descriptor&& other) noexcept
        : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_number, other.m_number);
        return *this;
    }
    ~Descriptor();

    int number() const { return m_number; }
    explicit operator bool() const { return m_number >= 0; }

private:
    int m_number;
};

/// Opens a file that the user picked, for reading. One that is no ordinary file, that is too large, or that
/// is one of `ownFiles` under whatever name or link, is refused without being opened. Throws ImportError.
Descriptor openPicked(const QString& path, const QStringList& ownFiles);
