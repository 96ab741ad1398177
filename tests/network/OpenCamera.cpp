// SPDX-License-Identifier: Apache-2.0
#include "tests/network/OpenCamera.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>

OpenCamera::OpenCamera(const Site& site, const RZ_CC_DEVICE_INFO& camera)
{
    const lab::Visit visit(site.host());
    EXPECT_EQ(RZ_CC_CreateHandle(&m_handle, &camera), RZ_OK);
    m_result = RZ_CC_OpenDevice(m_handle, RZ_ACCESS_EXCLUSIVE, 0);
}

OpenCamera::~OpenCamera()
{
    EXPECT_EQ(RZ_CC_DestroyHandle(m_handle), RZ_OK);
}

GenApi::IPort* OpenCamera::port() const
{
    return static_cast<GenApi::IPort*>(RZ_CC_GetTlProxy(m_handle));
}

std::string OpenCamera::description() const
{
    std::string buffer(RZ_MAX_DESCRIPTION, '\0');
    unsigned length = 0;
    EXPECT_EQ(RZ_XML_GetGenICamXML(m_handle, reinterpret_cast<unsigned char*>(buffer.data()),
                                   RZ_MAX_DESCRIPTION, &length),
              RZ_OK);
    buffer.resize(length);
    return buffer;
}

int OpenCamera::descriptionResult() const
{
    std::string buffer(RZ_MAX_DESCRIPTION, '\0');
    unsigned length = 0;
    return RZ_XML_GetGenICamXML(m_handle, reinterpret_cast<unsigned char*>(buffer.data()), RZ_MAX_DESCRIPTION,
                                &length);
}

unsigned OpenCamera::read(unsigned address) const
{
    unsigned value = 0;
    port()->Read(&value, address, sizeof value);
    return ntohl(value);
}

void OpenCamera::write(unsigned address, unsigned value) const
{
    const unsigned bigEndian = htonl(value);
    port()->Write(&bigEndian, address, sizeof bigEndian);
}
