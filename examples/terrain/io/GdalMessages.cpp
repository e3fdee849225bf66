#include "io/GdalMessages.h"

#include <tarqa/housekeeping/ErrorProtocol.h>

#include <cpl_error.h>
#include <gdal.h>

#include <algorithm>
#include <mutex>

namespace terrain {

/// GDAL's side of GdalMessages.
struct GdalMessageSink
{
    static void CPL_STDCALL take(CPLErr kind, CPLErrorNum, const char* text)
    {
        auto* const p_messages = static_cast<GdalMessages*>(CPLGetErrorHandlerUserData());
        if (kind < CE_Warning || !text) {
            return;
        }
        try {
            std::vector<std::string>& list
                = kind == CE_Warning ? p_messages->m_warnings : p_messages->m_errors;
            if (std::find(list.begin(), list.end(), text) == list.end()) {
                list.push_back(text);
            }
        } catch (const std::exception&) {
            // C code called us. Short of memory there is nothing better than to do without the message.
        }
    }
};

GdalMessages::GdalMessages()
{
    static std::once_flag s_registered;
    std::call_once(s_registered, GDALAllRegister);
    CPLErrorReset();
    CPLPushErrorHandlerEx(&GdalMessageSink::take, this);
}

GdalMessages::~GdalMessages()
{
    CPLPopErrorHandler();
    for (const std::string& warning : m_warnings) {
        tarqa::housekeeping::ErrorProtocol::instance().log_message("GDAL: " + warning);
    }
}

std::string GdalMessages::text() const
{
    std::string text;
    for (const std::string& error : m_errors) {
        text += (text.empty() ? "" : "; ") + error;
    }
    return text;
}

} // namespace terrain
