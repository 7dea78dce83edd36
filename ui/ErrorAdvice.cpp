#include "ui/ErrorAdvice.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace tarvessa {

const QList<ErrorAdvice>& allErrorAdvice() {
    static const QList<ErrorAdvice> all = {
        {u"1040"_s, u"O servidor já tem todas as conexões que aceita. Aguarde um instante e repita a "
                    u"operação; se voltar "
                    u"a acontecer, aumente max_connections no servidor."_s},
        {u"1044"_s,
         u"O usuário da fonte de dados QDX não tem permissão neste banco de dados. Confira DATABASE na fonte "
         u"de dados e as permissões do usuário."_s},
        {u"1045"_s, u"O servidor recusou o usuário ou a senha da fonte de dados QDX. Confira os dois, e se o "
                    u"usuário pode "
                    u"entrar deste computador."_s},
        {u"1049"_s,
         u"O servidor não tem o banco de dados indicado na fonte de dados QDX. Confira DATABASE na fonte de "
         u"dados."_s},
        {u"1054"_s, u"Falta uma coluna em uma tabela do banco de dados. Rode verifica.sql, que diz qual, e "
                    u"peça a coluna "
                    u"a quem cuida do banco de dados."_s},
        {u"1055"_s,
         u"O servidor exige agrupamentos completos (ONLY_FULL_GROUP_BY). Ponha na fonte de dados QDX o "
         u"INITSTMT do guia de instalação."_s},
        {u"1062"_s,
         u"O banco de dados já tem um registro com esse código. Carregue a lista novamente e confira o que "
         u"está gravado antes de repetir a operação."_s},
        {u"1142"_s,
         u"O usuário da fonte de dados QDX não tem permissão para uma tabela. Quem cuida do banco de dados "
         u"deve conceder as permissões de grants.sql."_s},
        {u"1146"_s, u"Falta uma tabela no banco de dados. Confira DATABASE na fonte de dados QDX e "
                    u"lower_case_table_names no servidor; verifica.sql diz quais tabelas faltam."_s},
        {u"1205"_s,
         u"Outra estação ou outro programa está com os mesmos registros em uso ou, onde há mais de um "
         u"servidor, um deles acabou de cair e os outros ainda se acertam; a espera terminou. Aguarde um "
         u"instante e repita a operação."_s},
        {u"1213"_s,
         u"Duas operações disputaram os mesmos registros, e o servidor interrompeu esta. Repita a operação."_s},
        {u"1292"_s,
         u"O banco de dados não aceitou uma data ou um número. Confira o que foi digitado; se estiver certo, "
         u"confira o INITSTMT da fonte de dados QDX."_s},
        {u"2002"_s,
         u"O servidor do banco de dados não responde. Confira se ele está ligado e se a rede funciona, e "
         u"repita a operação."_s},
        {u"2003"_s,
         u"O servidor do banco de dados não responde. Confira se ele está ligado, se a rede funciona e se "
         u"SERVER e PORT estão certos na fonte de dados QDX, e repita a operação."_s},
        {u"2005"_s,
         u"A rede não conhece o nome do servidor do banco de dados. Confira SERVER na fonte de dados QDX e a "
         u"rede deste computador."_s},
        {u"2006"_s, u"O servidor do banco de dados encerrou a conexão. Repita a operação; se voltar a "
                    u"acontecer, confira "
                    u"o servidor e a rede."_s},
        {u"2013"_s,
         u"A conexão caiu no meio do comando, ou o servidor não respondeu a tempo. Confira o servidor e a "
         u"rede, e repita a operação."_s},
        {u"01000"_s,
         u"O driver ODBC da fonte de dados QDX não pôde ser carregado. Instale o driver novamente e confira "
         u"Driver na fonte de dados."_s},
        {u"IM002"_s,
         u"A fonte de dados QDX não existe neste computador, ou o operador não pode lê-la. Crie-a como diz o "
         u"guia de instalação."_s},
        {u"IM003"_s,
         u"O driver ODBC da fonte de dados QDX não pôde ser carregado. Instale o driver novamente."_s},
        {u"IM014"_s, u"O driver ODBC da fonte de dados QDX não é de 64 bits, como o programa. Crie a fonte "
                     u"de dados com o "
                     u"driver de 64 bits."_s},
        {u"S1000"_s,
         u"O gerenciador ODBC não conseguiu usar a fonte de dados QDX. Confira o driver e a fonte de dados."_s},
    };
    return all;
}

QString errorAdvice(const RuntimeError& error) {
    const QString code = error.number() == 0 ? error.sqlState() : QString::number(error.number());
    const QList<ErrorAdvice>& all = allErrorAdvice();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const ErrorAdvice& advice) { return advice.code == code; });
    return found == all.end() ? QString() : found->sentence;
}

} // namespace tarvessa
