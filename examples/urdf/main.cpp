// A robot's description: reads it, says what it is made of, draws its joints as they stand at rest, gives links without a mass a small
// one, and writes it back.
//
//     urdf <in.urdf> <out.urdf> <picture.svg>

#include "../common/Document.h"
#include "../common/Picture.h"
#include "Urdf.h"

#include <cmath>
#include <iostream>
#include <map>

namespace {

/// Where a frame stands in the world: a turn, by rows, and a place.
struct Frame {
    double turn[3][3] = { { 1, 0, 0 }, { 0, 1, 0 }, { 0, 0, 1 } };
    double place[3] = { 0, 0, 0 };
};

Frame inside(Frame const& outer, urdf::Origin const& origin)
{
    urdf::Triple const zero{};
    urdf::Triple const xyz = origin.xyz ? origin.xyz->value() : zero, rpy = origin.rpy ? origin.rpy->value() : zero;
    double const cr = std::cos(rpy[0]), sr = std::sin(rpy[0]), cp = std::cos(rpy[1]), sp = std::sin(rpy[1]);
    double const cy = std::cos(rpy[2]), sy = std::sin(rpy[2]);
    double const own[3][3] = { { cy * cp, cy * sp * sr - sy * cr, cy * sp * cr + sy * sr },
                               { sy * cp, sy * sp * sr + cy * cr, sy * sp * cr - cy * sr },
                               { -sp, cp * sr, cp * cr } };
    Frame frame;
    for (int row = 0; row < 3; ++row) {
        frame.place[row] = outer.place[row];
        for (std::size_t i = 0; i < 3; ++i) {
            frame.place[row] += outer.turn[row][i] * xyz[i];
            frame.turn[row][i] = 0;
            for (int k = 0; k < 3; ++k)
                frame.turn[row][i] += outer.turn[row][k] * own[k][i];
        }
    }
    return frame;
}

/// From the front, and from the side a metre beside it.
class Skeleton {
public:
    explicit Skeleton(urdf::Robot const& robot) : m_robot(robot)
    {
        std::map<std::string, bool> isChild;
        for (urdf::Joint const& joint : robot.joints)
            isChild[joint.child.link] = true;
        for (urdf::Link const& link : robot.links)
            if (!isChild[link.name])
                draw(link.name, Frame(), 0);
    }
    Picture const& picture() const { return m_picture; }

private:
    void draw(std::string const& link, Frame const& frame, std::size_t depth)
    {
        m_picture.addDot({ frame.place[1], frame.place[2] }, "#2471a3");
        m_picture.addDot({ frame.place[0] + 1, frame.place[2] }, "#239b56");
        if (depth > m_robot.joints.size())
            return; // joints in a circle
        for (urdf::Joint const& joint : m_robot.joints) {
            if (!(joint.parent.link == link))
                continue;
            Frame const child = inside(frame, joint.origin ? *joint.origin : urdf::Origin());
            std::string const colour = joint.kind == urdf::JointKind::fixed ? "#b0b0b0" : "#c0392b";
            m_picture.addLine({ { frame.place[1], frame.place[2] }, { child.place[1], child.place[2] } }, colour, 2);
            m_picture.addLine({ { frame.place[0] + 1, frame.place[2] }, { child.place[0] + 1, child.place[2] } }, colour, 2);
            draw(joint.child.link, child, depth + 1);
        }
    }

    urdf::Robot const& m_robot;
    Picture m_picture;
};

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4) {
        std::cerr << "urdf <in.urdf> <out.urdf> <picture.svg>\n";
        return 2;
    }
    urdf::Robot robot;
    if (!readDocument(argv[1], robot))
        return 1;
    double mass = 0;
    std::map<std::string, int> shapes;
    std::size_t moving = 0, made = 0;
    for (urdf::Link& link : robot.links) {
        for (urdf::Body const& body : link.visuals)
            if (body.geometry)
                ++shapes[body.geometry->word()];
        if (!link.inertial) {
            urdf::Inertial& inertial = link.inertial.make(); // simulators drop links that weigh nothing
            inertial.mass.make().value = 0.001;
            urdf::Inertia& inertia = inertial.inertia.make();
            inertia.ixx = 1e-6;
            inertia.iyy = 1e-6;
            inertia.izz = 1e-6;
            ++made;
        } else if (link.inertial->mass) {
            mass += link.inertial->mass->value;
        }
    }
    for (urdf::Joint const& joint : robot.joints)
        moving += joint.kind == urdf::JointKind::fixed ? 0 : 1;
    std::cout << robot.name.value() << ": " << robot.links.size() << " links of " << mass << " kg, " << robot.joints.size()
              << " joints, " << moving << " of them move;";
    for (auto const& [word, count] : shapes)
        std::cout << ' ' << count << ' ' << word;
    std::cout << "; " << made << " links got a mass\n";
    return writeDocument(argv[2], robot) && Skeleton(robot).picture().write(argv[3]) ? 0 : 1;
}
