/* Point-cloud families. */
#ifndef DAX3DPCL_H
#define DAX3DPCL_H

#include "dax3dpcl/kdtree.h"
#include "dax3dpcl/kdtree_v2.h"
#include "dax3dpcl/normals.h"

#endif
