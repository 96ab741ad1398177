// SPDX-License-Identifier: Apache-2.0
// What programs include to reach a camera's features by name.
#pragma once

#include "genapi/Base/GCException.h"
#include "genapi/Base/GCString.h"
#include "genapi/GenApi/CNodeMapFactory.h"
#include "genapi/GenApi/CNodeMapRef.h"
#include "genapi/GenApi/IBase.h"
#include "genapi/GenApi/IBoolean.h"
#include "genapi/GenApi/ICommand.h"
#include "genapi/GenApi/IInteger.h"
#include "genapi/GenApi/INode.h"
#include "genapi/GenApi/INodeMap.h"
#include "genapi/GenApi/IPort.h"
#include "genapi/GenApi/IRegister.h"
