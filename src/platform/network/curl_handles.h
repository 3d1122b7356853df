#pragma once

#include <QByteArray>
#include <curl/curl.h>
#include <memory>

namespace zelkam {

struct CurlEasyDeleter
{
    void operator()(CURL *handle) const { curl_easy_cleanup(handle); }
};
using CurlEasy = std::unique_ptr<CURL, CurlEasyDeleter>;

struct CurlMultiDeleter
{
    void operator()(CURLM *handle) const { curl_multi_cleanup(handle); }
};
using CurlMulti = std::unique_ptr<CURLM, CurlMultiDeleter>;

/// A list of header lines for curl.
class CurlList
{
public:
    CurlList() = default;
    ~CurlList() { curl_slist_free_all(m_list); }
    CurlList(const CurlList &) = delete;
    CurlList &operator=(const CurlList &) = delete;

    void clear()
    {
        curl_slist_free_all(m_list);
        m_list = nullptr;
    }

    /// False when there is no memory for it.
    bool append(const QByteArray &line)
    {
        curl_slist *longer = curl_slist_append(m_list, line.constData());
        if (longer)
            m_list = longer;
        return longer;
    }

    curl_slist *get() const { return m_list; }

private:
    curl_slist *m_list = nullptr;
};

} // namespace zelkam
