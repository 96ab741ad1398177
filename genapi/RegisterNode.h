// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "genapi/GenApi/IRegister.h"
#include "genapi/Node.h"

namespace genapi {

/// Bytes in the camera, a text or anything else.
class RegisterNode : public virtual Node, public GenApi::IRegister
{
public:
    RegisterNode(Engine& engine, ArvGcRegister* node);

    void Set(const uint8_t* buffer, int64_t length, bool verify) override;
    void Get(uint8_t* buffer, int64_t length) const override;
    int64_t GetLength() const override;

private:
    void requireLength(int64_t length) const;

    ArvGcRegister* m_register;
};

} // namespace genapi
