#pragma once

#include <array>

/// Numbers of water and steam, in the order of the printed tables; rows and numbers only, the laws are in Ifc67 and
/// Eau.
namespace Vk_fl_prop_lib {

/// Columns columns in Rows rows.
template <int Rows, int Columns>
using Table = std::array<std::array<double, Columns>, Rows>;

/// Coefficients of the 1967 IFC Formulation for Industrial Use. Index 0 is unused where the publication counts from 1;
/// a place that the publication leaves blank is 0 and adds nothing.
struct Ifc67Tables {
  double b, I1;              // X = e^(b (1 - theta)); I1 = R Tc / (Pc vc)
  std::array<double, 10> k;  // saturation line
  std::array<double, 3> L;   // boundary of the sub-regions 2 and 3
  std::array<double, 23> A;  // sub-region 1
  std::array<double, 13> a;
  Table<10, 7> B;  // sub-region 2; rows mu, columns nu
  Table<9, 3> bi;  // rows mu, columns lambda; so is x
  Table<9, 4> z;   // exponents of X in rows 1 to 8, of B ...
  Table<9, 3> x;   // ... and of bi
};

/// Transport properties of water and steam.
struct WaterTransportTables {
  double lambda_liquid[6], lambda_vapour[6];  // W/(m K), ascending powers of T [K]
  Table<6, 7> L;  // viscosity: rows are powers of T_ref / T - 1, columns of rho / rho_ref - 1
  std::array<double, 4> H;
  double rho_ref, T_ref, mu_ref;  // kg/m3, K, Pa s
};

// clang-format off
inline constexpr Ifc67Tables kIfc67 = {
  .b  = 0.7633333333,
  .I1 = 4.260321148,
  .k = {0,
        -7.691234564, -26.08023696, -168.1706546,
        64.23285504,  -118.9646225, 4.16711732,
        20.9750676,   1e9,          6},
  .L = {15.74373327, -34.17061978, 19.31380707},
  .A = {6824.687741,    -542.2063673,    -20966.66205,   39412.86787,
        -67332.77739,   99023.81028,     -109391.1774,   85908.41667,
        -45111.68742,   14181.38926,     -2017.271113,   7.982692717,
        -0.02616571843, 0.00152241179,   0.02284279054,  242.1647003,
        1.269716088e-10, 2.074838328e-7, 2.17402035e-8,  1.105710498e-9,
        12.93441934,    1.308119072e-5,  6.047626338e-14},
  .a = {0,
        0.8438375405, 5.362162162e-4, 1.72,          0.07342278489,
        0.0497585887, 0.65371543,     1.15e-6,       1.5108e-5,
        0.14188,      7.002753165,    2.995284926e-4, 0.204},
  .B = {{
    //  nu = 0             1               2               3               4               5               6
    {16.83599274,  28.56067796,    -54.38923329,   0.4330662834,   -0.6547711697, 0.08565182058, 0          },  // powers of theta
    {0,            0.06670375918,  1.388983801,    0,              0,             0,             0          },
    {0,            0.08390104328,  0.02614670893,  -0.03373439453, 0,             0,             0          },
    {0,            0.4520918904,   0.1069036614,   0,              0,             0,             0          },
    {0,            -0.5975336707,  -0.08847535804, 0,              0,             0,             0          },
    {0,            0.5958051609,   -0.5159303373,  0.2075021122,   0,             0,             0          },
    {0,            0.1190610271,   -0.09867174132, 0,              0,             0,             0          },
    {0,            0.1683998803,   -0.05809438001, 0,              0,             0,             0          },
    {0,            0.006552390126, 5.710218649e-4, 0,              0,             0,             0          },
    {193.6587558,  -1388.522425,   4126.607219,    -6508.211677,   5745.984054,   -2693.088365,  523.5718623},  // powers of X
  }},
  .bi = {{
    {}, {}, {}, {}, {}, {},
    {0, 0.4006073948,  0           },
    {0, 0.08636081627, 0           },
    {0, -0.8532322921, 0.3460208861},
  }},
  .z = {{
    {},
    {0, 13, 3,  0 },
    {0, 18, 2,  1 },
    {0, 18, 10, 0 },
    {0, 25, 14, 0 },
    {0, 32, 28, 24},
    {0, 12, 11, 0 },
    {0, 24, 18, 0 },
    {0, 24, 14, 0 },
  }},
  .x = {{
    {}, {}, {}, {}, {}, {},
    {0, 14, 0 },
    {0, 19, 0 },
    {0, 54, 27},
  }},
};

// Viscosity: the equation of the IAPS release of 1975 with coefficients cut to about five digits.
inline constexpr WaterTransportTables kWaterTransport = {
  .lambda_liquid = {-3.4775,   0.033475,  -0.0001009, 1.3731e-07,  -7.2938e-11, 0.0},
  .lambda_vapour = {0.0050692, 2.157e-05, 9.666e-08,  -3.0303e-11, 3.5318e-15,  0.0},
  .L = {{
    {0.5132,   0.21518, -0.28181, 0.17781,  -0.041766, 0,         0         },
    {0.32057,  0.73179, -1.0708,  0.4605,   0,         -0.015784, 0         },
    {0,        1.241,   -1.2632,  0.23404,  0,         0,         0         },
    {0,        1.4768,  0,        -0.49242, 0.16004,   0,         -0.0036295},
    {-0.77826, 0,       0,        0,        0,         0,         0         },
    {0.18854,  0,       0,        0,        0,         0,         0         },
  }},
  .H = {1.0, 0.978197, 0.579829, -0.202354},
  .rho_ref = 317.763,
  .T_ref   = 647.27,
  .mu_ref  = 5.5071e-05,
};
// clang-format on

}  // namespace Vk_fl_prop_lib
