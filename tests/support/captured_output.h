#pragma once

#include <QTemporaryFile>
#include <cstdio>
#include <unistd.h>

/// Takes in what the process writes to its standard output and standard error until it is read.
class CapturedOutput
{
public:
    CapturedOutput()
    {
        std::fflush(stdout);
        if (!m_file.open() || ::dup2(m_file.handle(), STDOUT_FILENO) < 0 ||
            ::dup2(m_file.handle(), STDERR_FILENO) < 0)
            qFatal("The output cannot be captured.");
    }
    ~CapturedOutput() { read(); }

    /// What was written; from here on the process writes where it wrote before.
    QByteArray read()
    {
        std::fflush(stdout);
        ::dup2(m_out, STDOUT_FILENO);
        ::dup2(m_err, STDERR_FILENO);
        m_file.seek(0);
        return m_file.readAll();
    }

private:
    QTemporaryFile m_file;
    const int m_out = ::dup(STDOUT_FILENO);
    const int m_err = ::dup(STDERR_FILENO);
};
