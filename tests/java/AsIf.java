// Asks the verification class as if the JVM had other properties. Each argument is a question:
// "name|property=value|property=value"; a property without "=" is taken away.

import java.util.Properties;

public final class AsIf {
    private AsIf() {}

    public static void main(String[] questions) throws Exception {
        for (String question : questions) {
            Properties before = (Properties) System.getProperties().clone();
            String[] parts = question.split("\\|");
            for (int i = 1; i < parts.length; ++i) {
                change(parts[i]);
            }
            // By name: it is in another jar.
            Object names = new String[] {parts[0]};
            Class.forName("Verify").getMethod("main", String[].class).invoke(null, names);
            System.setProperties(before);
        }
    }

    private static void change(String setting) {
        int equals = setting.indexOf('=');
        if (equals < 0) {
            System.clearProperty(setting);
        } else {
            System.setProperty(setting.substring(0, equals), setting.substring(equals + 1));
        }
    }
}
