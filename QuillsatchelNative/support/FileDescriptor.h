#pragma once

#include <unistd.h>
#include <utility>

/// Owns a file descriptor.
class FileDescriptor
{
public:
    FileDescriptor() = default;

    /// Takes ownership of `number`; a negative number means none.
    explicit FileDescriptor(int number)
        : m_number(number)
    {
    }

    FileDescriptor(FileDescriptor &&other) noexcept
        : m_number(std::exchange(other.m_number, -1))
    {
    }

    FileDescriptor &operator=(FileDescriptor &&other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }

    ~FileDescriptor()
    {
        if (isOpen())
            close(m_number);
    }

    bool isOpen() const { return m_number >= 0; }

    int number() const { return m_number; }

private:
    int m_number = -1;
};
