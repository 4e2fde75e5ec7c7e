#include "platform/network/Transfer.h"

#include "platform/HttpClient.h"

#include <utility>

namespace
{

constexpr std::size_t MaximumHeaderSize = std::size_t(256) * 1024;
constexpr curl_off_t MaximumBodySize = HttpClient::MaximumBodySize;

} // namespace

Transfer::Transfer(const Options &options, std::stop_token stop)
    : m_deadline(Clock::now() + options.timeout)
    , m_stop(std::move(stop))
    , m_multi(curl_multi_init())
    , m_easy(curl_easy_init())
{
    if (m_easy)
        configure(options.caBundle);
}

void Transfer::configure(const std::string &caBundle)
{
    CURL *const easy = m_easy.get();
    curl_easy_setopt(easy, CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(easy, CURLOPT_QUICK_EXIT, 1L); // do not wait for a DNS lookup
    curl_easy_setopt(easy, CURLOPT_HTTP_VERSION, long(CURL_HTTP_VERSION_1_1));
    curl_easy_setopt(easy, CURLOPT_USERAGENT, "Quillsatchel");
    curl_easy_setopt(easy, CURLOPT_ACCEPT_ENCODING, ""); // every supported encoding
    if (!caBundle.empty())
        curl_easy_setopt(easy, CURLOPT_CAINFO, caBundle.c_str());
    curl_easy_setopt(easy, CURLOPT_MAXFILESIZE_LARGE, MaximumBodySize);
    curl_easy_setopt(easy, CURLOPT_HEADERFUNCTION, &Transfer::receiveHeader);
    curl_easy_setopt(easy, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(easy, CURLOPT_WRITEFUNCTION, &Transfer::receiveBody);
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, this);
}

std::optional<Transfer::Response>
Transfer::get(const std::string &address, const std::string &protocols, const std::string &proxy)
{
    if (!m_easy || !m_multi || m_stop.stop_requested())
        return std::nullopt;
    curl_easy_setopt(m_easy.get(), CURLOPT_URL, address.c_str());
    curl_easy_setopt(m_easy.get(), CURLOPT_PROTOCOLS_STR, protocols.c_str());
    curl_easy_setopt(m_easy.get(), CURLOPT_PROXY, proxy.empty() ? nullptr : proxy.c_str());
    if (!perform())
        return std::nullopt;
    return Response { std::exchange(m_body, {}), redirect() };
}

// libcurl 8.22 also reports the Location of responses that are no redirects.
std::string Transfer::redirect() const
{
    long status = 0;
    curl_easy_getinfo(m_easy.get(), CURLINFO_RESPONSE_CODE, &status);
    if (status < 300 || status > 399)
        return {};
    const char *address = nullptr;
    curl_easy_getinfo(m_easy.get(), CURLINFO_REDIRECT_URL, &address);
    return address ? address : "";
}

bool Transfer::perform()
{
    m_body.clear();
    m_headerSize = 0;
    const std::stop_callback wakeUp(m_stop, [this] { curl_multi_wakeup(m_multi.get()); });
    curl_multi_add_handle(m_multi.get(), m_easy.get());
    int running = 1;
    while (curl_multi_perform(m_multi.get(), &running) == CURLM_OK && running > 0 &&
           waitForActivity())
        ;
    int left = 0;
    const CURLMsg *const message = curl_multi_info_read(m_multi.get(), &left);
    const bool isUsable = message && hasResponse(message->data.result);
    curl_multi_remove_handle(m_multi.get(), m_easy.get());
    return isUsable;
}

// Servers that announce a wrong length are common, and the receiver checks the body anyway.
bool Transfer::hasResponse(CURLcode result) const
{
    const bool isTruncated = result == CURLE_PARTIAL_FILE || result == CURLE_RECV_ERROR;
    return result == CURLE_OK || (isTruncated && !m_body.isEmpty());
}

// False if the exchange must end.
bool Transfer::waitForActivity()
{
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_deadline - Clock::now());
    if (m_stop.stop_requested() || left.count() <= 0)
        return false;
    return curl_multi_poll(m_multi.get(), nullptr, 0, static_cast<int>(left.count()), nullptr) ==
           CURLM_OK;
}

// Returning a number other than `size` ends the exchange, here and below.
std::size_t Transfer::receiveHeader(char * /*line*/, std::size_t /*itemSize*/, std::size_t size,
                                    void *self)
{
    auto &transfer = *static_cast<Transfer *>(self);
    transfer.m_headerSize += size;
    return transfer.m_headerSize <= MaximumHeaderSize ? size : 0;
}

std::size_t Transfer::receiveBody(char *bytes, std::size_t /*itemSize*/, std::size_t size,
                                  void *self)
{
    auto &transfer = *static_cast<Transfer *>(self);
    transfer.m_body.append(bytes, static_cast<qsizetype>(size));
    return transfer.m_body.size() <= MaximumBodySize ? size : 0;
}
